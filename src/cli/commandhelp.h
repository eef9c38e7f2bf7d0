#pragma once

#include <QList>
#include <QString>
#include <QTextStream>

namespace tavik::cli {

// What `tavik help COMMAND` and `tavik COMMAND --help` print for one command.
struct CommandHelp {
    QString name;
    QString usage;        // "tavik dump PATH"
    QString description;  // one paragraph, wrapped by the printer
    QStringList examples; // shell lines that run as they stand in an installation root
};

// Every command, in the order the overview lists them.
const QList<CommandHelp>& AllCommandHelp();

// The help of one command, or nullptr for a name that is no command.
const CommandHelp* FindCommandHelp(const QString& name);

// "tavik 1.0.0"
QString ToolVersionLine();

// The overview: every usage line and how to get more.
void PrintOverview(QTextStream& out);

// Usage line, description and example of one command.
void PrintCommandHelp(QTextStream& out, const CommandHelp& help);

} // namespace tavik::cli
