#include "commandhelp.h"

#include <QStringList>

namespace tavik::cli {

namespace {

// Examples run in the root of an installation (the checkout is one): they use the demo
// package and files of the installation only, so each one works as printed.
QList<CommandHelp> makeHelp() {
    return {
        {"dump",
         "tavik dump PATH",
         "Prints a package index file, the Package.io of a package folder, or a service file "
         "(_<ID>._) as JSON: every key slot with its items, or the service with its sentences.",
         {"tavik dump Data/Beispielpaket", "tavik dump Data/Beispielpaket/_000001._"}},
        {"set",
         "tavik set PATH KEY ITEM VALUE [--type string|integer|long|boolean] [--lossy]",
         "Changes one item of a package index exactly as the editor does: open, change, save. "
         "A missing file starts an empty store; the value is a text unless --type says otherwise. "
         "A name or text code page 1252 cannot hold is refused, naming the character and its "
         "place, unless --lossy writes it as \"?\".",
         {"tavik set Data/Beispielpaket INFO Name \"Mein Paket\"",
          "tavik set Data/Beispielpaket 0000 Color 255 --type long"}},
        {"delete",
         "tavik delete PATH KEY ITEM",
         "Deletes one item of a package index exactly as the editor does: open, change, save.",
         {"tavik delete Data/Beispielpaket 0000 Color"}},
        {"ini",
         "tavik ini FILE SECTION KEY [--default TEXT | --set VALUE | --delete]",
         "Reads a value of a settings file (or the default when it is missing), or writes or "
         "deletes it, with the rules the editor uses for Tavik.ini, Formats.ini and the language "
         "files.",
         {"tavik ini bin/Formats.ini mp3 Format"}},
        {"measure",
         "tavik measure FILE...",
         "Opens each sound file as the editor does and prints its length in milliseconds and its "
         "path, separated by a tab; a sound that cannot be opened prints \"error CODE\" and its "
         "path, and standard error says what the code means.",
         {"tavik measure Data/Beispielpaket/0000.wav Data/Beispielpaket/0002.mp3"}},
        {"play",
         "tavik play PACKAGE SERVICE [SENTENCE]",
         "Plays the sentences of a service in order (or only the sentence whose key is given) as "
         "the editor plays them, printing the event log lines. SERVICE is a service ID of the "
         "package or the path of a service file.",
         {"tavik play Data/Beispielpaket 000001 3289"}},
        {"check",
         "tavik check PACKAGE [--json] [--no-loudness]",
         "Lists what would make the editor or the add-on trip over a package folder, one finding "
         "a line (or as JSON), or \"no findings\". Every sound's loudness (EBU R 128) is measured "
         "too: a sound more than 3 LU from the package's median or with a true peak above -1 "
         "dBTP is warned about, and --json lists each announcement's loudness and true peak. "
         "Figures are kept in the user's cache folder, so only new or changed sounds are "
         "measured again; --no-loudness leaves loudness out. Exit code 0 when there is nothing "
         "to report, 1 with findings, 2 when the folder holds no package index the editor opens.",
         {"tavik check Data/Beispielpaket"}},
        {"write",
         "tavik write JSON PATH [--lossy]",
         "Writes the package index or service file a dump describes (a folder stands for its "
         "Package.io): dump then write gives back every file byte for byte. A text code page 1252 "
         "cannot hold is refused unless --lossy writes it as \"?\".",
         {"tavik dump Data/Beispielpaket > index.json && tavik write index.json "
          "Data/Beispielpaket"}},
        {"new",
         "tavik new DATA NAME [--title T] [--author A] [--comment C] [--picture P] [--lossy]",
         "Makes the package folder NAME in the data folder DATA (made when missing) as the "
         "dialog \"Neu\" does; title and author are required. A text code page 1252 cannot hold "
         "is refused, naming the character and its place, unless --lossy writes it as \"?\".",
         {"tavik new Data Linie7 --title \"Linie 7\" --author \"Verkehrsbetrieb\" --comment "
          "\"Ansagen\""}},
        {"import",
         "tavik import PACKAGE FILE... [--title T]... [--lossy]",
         "Copies sound files into a package as the import dialog does, each under the next free "
         "key, and prints each key and title. A file that is no sound, or a title code page 1252 "
         "cannot hold (unless --lossy writes it as \"?\"), is refused and nothing is copied.",
         {"tavik import Data/Beispielpaket Data/Beispielpaket/0000.wav --title \"Gong\""}},
        {"render",
         "tavik render PACKAGE SERVICE SENTENCE -o OUT.wav [--rate HZ] [--channels 1|2]",
         "Writes one sentence of a service as a 16-bit WAVE file (44,100 Hz stereo unless asked "
         "otherwise), as the player schedules it. SERVICE is a service ID of the package or the "
         "path of a service file.",
         {"tavik render Data/Beispielpaket 000001 3289 -o Satz.wav"}},
    };
}

// The description wrapped at word ends to lines of at most 76 characters.
QStringList wrapped(const QString& text) {
    QStringList lines;
    QString line;
    for (const QString& word : text.split(u' ', Qt::SkipEmptyParts)) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > 76) {
            lines << line;
            line.clear();
        }
        line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
    }
    if (!line.isEmpty())
        lines << line;
    return lines;
}

} // namespace

const QList<CommandHelp>& AllCommandHelp() {
    static const QList<CommandHelp> help = makeHelp();
    return help;
}

const CommandHelp* FindCommandHelp(const QString& name) {
    for (const CommandHelp& help : AllCommandHelp()) {
        if (help.name == name)
            return &help;
    }
    return nullptr;
}

QString ToolVersionLine() {
    return QStringLiteral("tavik %1.%2.%3")
        .arg(TAVIK_VERSION_MAJOR)
        .arg(TAVIK_VERSION_MINOR)
        .arg(TAVIK_VERSION_PATCH);
}

void PrintOverview(QTextStream& out) {
    bool first = true;
    for (const CommandHelp& help : AllCommandHelp()) {
        out << (first ? "usage: " : "       ") << help.usage << '\n';
        first = false;
    }
    out << "       tavik help COMMAND | tavik COMMAND --help | tavik --version\n";
}

void PrintCommandHelp(QTextStream& out, const CommandHelp& help) {
    out << "usage: " << help.usage << "\n\n";
    for (const QString& line : wrapped(help.description))
        out << "  " << line << '\n';
    out << "\nexample" << (help.examples.size() > 1 ? "s" : "") << ":\n";
    for (const QString& example : help.examples)
        out << "  " << example << '\n';
}

} // namespace tavik::cli
