#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QWidget;

namespace tavik {

// One request for the platform's file-open dialog. The filter is written as the Windows
// component takes it: "description|pattern|description|pattern".
struct FileDialogRequest {
    QWidget* owner = nullptr;
    QString startFolder;
    QString title;
    QString filter;
    bool save = false; // a save dialog: the file may not exist yet
};

using FileDialogHandler = std::function<QString(const FileDialogRequest&)>;

// The chosen path, or "" when the user cancels.
QString ShowOpenDialog(QWidget* owner, const QString& startFolder, const QString& title,
                       const QString& filter);

// The path to save to, or "" when the user cancels. Goes to the same handler as the open
// dialog, with `save` set.
QString ShowSaveDialog(QWidget* owner, const QString& startFolder, const QString& title,
                       const QString& filter);

// "Tavik Indexdatei [*.io]|*.io" in the form Qt's dialogs take: "Tavik Indexdatei [*.io] (*.io)".
QString QtFilterFromWindows(const QString& filter);

// Lets a test choose files instead of a user; an empty handler restores the real dialog.
FileDialogHandler SetFileDialogHandler(FileDialogHandler handler);

} // namespace tavik
