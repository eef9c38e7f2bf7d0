#pragma once

#include <QStringList>
#include <QTextStream>

namespace tavik {
class RuntimeError;
class clsZELDB;
class modMCI;
struct AnnouncementTable;
} // namespace tavik

namespace tavik::cli {

// Runs the headless tool on its arguments (without the program name). Returns the exit
// code: 0 on success, 2 with one line on `err` naming the file and the problem otherwise.
int runTool(const QStringList& args, QTextStream& out, QTextStream& err);

// The verbs, each in its own file.
int dumpCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int setCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int deleteCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int iniCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int measureCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int playCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int checkCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int writeCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int newCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int importCommand(const QStringList& args, QTextStream& out, QTextStream& err);
int renderCommand(const QStringList& args, QTextStream& out, QTextStream& err);

// One line on `err`: "tavik: <file>: <problem>". Returns 2.
int fail(QTextStream& err, const QString& file, const QString& problem);

// The same for a runtime error: "tavik: <file>: runtime error 76 (Pfad nicht gefunden)".
int failRuntime(QTextStream& err, const QString& file, const tavik::RuntimeError& error);

// For a package that another program keeps locked: "tavik: <file>: <problem>; not changed".
// Returns 3.
int failBusy(QTextStream& err, const QString& file, const tavik::RuntimeError& busy);

// The package folder a file of it lies in, or the folder itself.
QString packageFolderOf(const QString& path);

// The service file a command line names: a file's path as it stands, else the file of the
// package that holds the service with that ID.
QString serviceFileOf(const QString& package, const QString& service);

// A package folder stands for its index file.
QString indexFilePath(const QString& path);

// Loads the package's announcements as the editor does, naming each entry without a sound
// file on `err`. Raises the load's runtime errors.
void loadToolAnnouncements(clsZELDB& store, const QString& indexPath, modMCI& mci,
                           AnnouncementTable& table, QTextStream& err);

} // namespace tavik::cli
