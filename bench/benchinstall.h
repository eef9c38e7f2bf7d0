#pragma once

#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "log/eventlog.h"
#include "settings/language.h"
#include "util/msgbox.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace tavik::bench {

// A scratch installation root (bin/ with the formats file and a chosen language, res/lang/,
// Data/) that TAVIK_HOME points at, and what a main window needs on it: the language, the
// event log and the MCI emulator on the null output. Message boxes are answered with OK.
class BenchInstallation {
public:
    BenchInstallation() {
        qputenv("TAVIK_HOME", root.path().toLocal8Bit());
        for (const char* folder : {"bin", "res/lang", "Data"})
            QDir(root.path()).mkpath(QString::fromLatin1(folder));
        QFile::copy(QStringLiteral(TAVIK_SOURCE_ROOT "/bin/Formats.ini"),
                    root.filePath(QStringLiteral("bin/Formats.ini")));
        const QString languageFile = root.filePath(QStringLiteral("res/lang/Deutsch.lng"));
        QFile::copy(QStringLiteral(TAVIK_SOURCE_ROOT "/res/lang/Deutsch.lng"), languageFile);
        QFile ini(root.filePath(QStringLiteral("bin/Tavik.ini")));
        if (ini.open(QIODevice::WriteOnly))
            ini.write("[Settings]\r\nLanguage=" + languageFile.toLocal8Bit() + "\r\n");
        SetMessageHandler([](const MessageRequest&) { return MsgResult::OK; });
    }

    QTemporaryDir root;
    Language language;
    EventLog log{root.filePath(QStringLiteral("bin")), &language};
    EmulatorBackend backend;
    modMCI mci{backend, [this](const QString& line) { log.WriteLog(line); }};
};

} // namespace tavik::bench
