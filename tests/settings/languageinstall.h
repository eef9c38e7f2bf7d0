#pragma once

#include "support/tempdir.h"
#include "util/apppath.h"
#include "util/msgbox.h"

#include <QDir>
#include <QList>
#include <QString>

namespace tavik::test {

// An installation root with an empty language folder; the program folder is its "bin".
struct LanguageInstall {
    TempDir dir;

    LanguageInstall() {
        qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
        QDir(dir.path()).mkpath(QStringLiteral("bin"));
        QDir(dir.path()).mkpath(QStringLiteral("res/lang"));
    }
    ~LanguageInstall() { qunsetenv("TAVIK_HOME"); }
    LanguageInstall(const LanguageInstall&) = delete;
    LanguageInstall& operator=(const LanguageInstall&) = delete;

    // A language file with the given header; an empty value leaves its key out.
    QString addLanguage(const QString& fileName, const QByteArray& name,
                        const QByteArray& version = "1.0", const QByteArray& author = "Team",
                        const QByteArray& more = {}) const {
        QByteArray text = "[_Language]\r\n";
        if (!name.isEmpty())
            text += "Name=" + name + "\r\n";
        if (!version.isEmpty())
            text += "FileVersion=" + version + "\r\n";
        if (!author.isEmpty())
            text += "Autor=" + author + "\r\n";
        return dir.write(QStringLiteral("res/lang/") + fileName, text + more);
    }

    // The path the program stores for a file of the language folder.
    QString storedPath(const QString& fileName) const {
        // The program folder and the designed "\\..\\res\\lang\\" with the system's separators.
        return dir.path() + QStringLiteral("/bin") +
               NativePath(QStringLiteral("\\..\\res\\lang\\")) + fileName;
    }
    QString settingsFile() const { return dir.file(QStringLiteral("bin/Tavik.ini")); }
    void storeLanguage(const QString& path) const {
        dir.write(QStringLiteral("bin/Tavik.ini"),
                  "[Settings]\r\nLanguage=" + path.toLocal8Bit() + "\r\n");
    }
};

// Answers every message box with `answer` and remembers what was asked.
struct MessageRecorder {
    QList<MessageRequest> seen;
    MsgResult answer = MsgResult::OK;
    MessageHandler previous;

    MessageRecorder() {
        previous = SetMessageHandler([this](const MessageRequest& request) {
            seen << request;
            return answer;
        });
    }
    ~MessageRecorder() { SetMessageHandler(previous); }
    MessageRecorder(const MessageRecorder&) = delete;
    MessageRecorder& operator=(const MessageRecorder&) = delete;
};

} // namespace tavik::test
