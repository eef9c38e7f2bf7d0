#pragma once

#include "app/frmmain.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "audio/recordingbackend.h"
#include "log/eventlog.h"
#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "package/packagesettings.h"
#include "settings/language.h"
#include "support/buildpaths.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "util/conversions.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/tickcount.h"

#include <QDir>
#include <QFile>
#include <QStringList>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace tavik::test {

// A whole installation in a scratch folder (bin/ with the formats file, res/lang/ with the
// delivered language files, Data/) and the editor's main window on it, with the MCI emulator
// playing to the null output and every command recorded. Message boxes are recorded and
// answered from a queue (OK, Yes for questions, Discard for unsaved changes, when it is empty).
class EditorFixture {
public:
    struct Entry {
        QString key;
        QString title;
        int lengthMs = 0; // -1: no sound file
        std::int32_t color = 0;
        bool nameVisible = true;
        std::int32_t autoPlace = -1;
    };

    explicit EditorFixture(const QString& languageFile = QStringLiteral("Deutsch.lng"))
        : log(programFolder(), &language),
          mci(recorder, [this](const QString& line) { logLines << line; }) {
        qputenv("TAVIK_HOME", root.path().toLocal8Bit());
        // The system's trash, where removed sounds go when a package closes, is a scratch one.
        qputenv("XDG_DATA_HOME", root.file(QStringLiteral("share")).toLocal8Bit());
        QDir(root.path()).mkpath(QStringLiteral("share"));
        QDir(root.path()).mkpath(QStringLiteral("bin"));
        QDir(root.path()).mkpath(QStringLiteral("res/lang"));
        QDir(root.path()).mkpath(QStringLiteral("Data"));
        QFile::copy(tavik::test::CheckoutPath(QStringLiteral("/bin/Formats.ini")),
                    root.file(QStringLiteral("bin/Formats.ini")));
        for (const QString& name : {QStringLiteral("Deutsch.lng"), QStringLiteral("English.lng")})
            QFile::copy(tavik::test::CheckoutPath(QStringLiteral("/res/lang/")) + name,
                        root.file(QStringLiteral("res/lang/") + name));
        if (!languageFile.isEmpty())
            root.write(QStringLiteral("bin/Tavik.ini"),
                       "[Settings]\r\nLanguage=" +
                           root.file(QStringLiteral("res/lang/") + languageFile).toLocal8Bit() +
                           "\r\n");
        previousHandler = SetMessageHandler([this](const MessageRequest& request) {
            messages.push_back(request);
            if (!answers.empty()) {
                const MsgResult answer = answers.front();
                answers.pop_front();
                return answer;
            }
            // A question before unsaved changes are lost is answered as a user who moves on.
            if (request.buttons == MsgButtons::SaveDiscardCancel)
                return MsgResult::Discard;
            return request.buttons == MsgButtons::YesNo ? MsgResult::Yes : MsgResult::OK;
        });
        main = std::make_unique<frmMain>(language, mci, log);
        main->ShowSplash = false;
    }

    ~EditorFixture() {
        main.reset();
        SetMessageHandler(previousHandler);
        qunsetenv("TAVIK_HOME");
        qunsetenv("XDG_DATA_HOME");
    }

    QString programFolder() const { return root.file(QStringLiteral("bin")); }

    // Writes a package under Data/ and returns its folder.
    QString writePackage(const QString& folderName, const QString& name,
                         const std::vector<Entry>& entries) const {
        const QString folder = root.file(QStringLiteral("Data/") + folderName);
        QDir().mkpath(folder);
        clsZELDB store;
        store.SaveSetting(QStringLiteral("INFO"), QStringLiteral("Name"),
                          Variant::fromString(name));
        int position = 0;
        for (const Entry& e : entries) {
            store.SaveSetting(QStringLiteral("INDEX"), QString::number(++position),
                              Variant::fromString(JoinIndexEntry(e.key, e.title)));
            WriteAnnouncementSettings(store, e.key, {e.color, e.nameVisible, e.autoPlace});
            if (e.lengthMs >= 0)
                writeTone(folder + QStringLiteral("/") + e.key + QStringLiteral(".wav"),
                          e.lengthMs * 8LL, 8000);
        }
        store.SaveSetting(QStringLiteral("INDEX"), QStringLiteral("Count"),
                          Variant::fromLong(position));
        store.SaveIOFile(folder + QStringLiteral("/Package.io"));
        return folder;
    }

    // The keys the package index in `folder` lists at "INDEX" positions 1 to "Count", in order.
    static QStringList savedKeys(const QString& folder) {
        clsZELDB store;
        store.OpenIOFile(folder + QStringLiteral("/Package.io"));
        QStringList keys;
        const std::int16_t count = ReadIndexCount(store);
        for (int i = 1; i <= count; ++i) {
            const QString entry =
                CStr(store.GetSetting(QStringLiteral("INDEX"), QString::number(i), QString()));
            keys << entry.left(entry.indexOf(u'~'));
        }
        return keys;
    }

    // Runs start-up and loads the package in `folder`, as the open dialog hands it over.
    void open(const QString& folder) {
        main->PackageFolder = folder;
        main->IndexFilePath = folder + QStringLiteral("/Package.io");
        main->PackageChosen = true;
        main->UnloadAudioFiles();
        main->LoadPackage();
    }

    // The texts of the list's rows in one column (0 the key).
    QStringList column(int index) const {
        QStringList texts;
        ReportList* list = main->lsvPack();
        for (int i = 1; i <= list->Count(); ++i)
            texts << (index == 0 ? list->ListItems(i)->Text()
                                 : list->ListItems(i)->SubItems(index));
        return texts;
    }

    TempDir root;
    Language language;
    EventLog log;
    EmulatorBackend backend;
    // Called as each command is sent and again as it returns: a test looks at the windows at
    // the moment of a command.
    std::function<void()> atEachCommand;
    // Every command sent, with the time it was sent.
    RecordingBackend recorder{backend, [this] {
                                  if (atEachCommand)
                                      atEachCommand();
                                  return qint64(GetTickCount());
                              }};
    modMCI mci;
    std::unique_ptr<frmMain> main;
    QStringList logLines;
    std::vector<MessageRequest> messages;
    std::deque<MsgResult> answers;

private:
    MessageHandler previousHandler;
};

} // namespace tavik::test
