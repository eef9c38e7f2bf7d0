// The service editor's command that saves a sentence as a WAVE file.
#include "audio/sentencerender.h"
#include "audio/soundfile.h"
#include "service/dienstfixture.h"
#include "support/soundfixtures.h"
#include "support/tempdir.h"
#include "support/toolrun.h"
#include "util/filedialog.h"
#include "util/reportlist.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

using namespace tavik;
using tavik::test::DienstHost;
using tavik::test::press;
using Entry = DienstHost::Entry;

namespace {

std::vector<Entry> station() {
    return {
        {"0000", "Gong", 120, 255, true, 1},
        {"0001", "Achtung an Gleis 1", 80, 0, true, 2},
        {"0002", "Bahnsteig", 80},
    };
}

// Chooses `path` in every file dialog while it lives.
struct ChosenFile {
    QList<FileDialogRequest> requests;
    FileDialogHandler previous;
    explicit ChosenFile(const QString& path) {
        previous = SetFileDialogHandler([this, path](const FileDialogRequest& r) {
            requests << r;
            return path;
        });
    }
    ~ChosenFile() { SetFileDialogHandler(previous); }
};

} // namespace

TEST(frmDienstExport, SavesTheSelectedSentenceAsTheRendererWritesIt) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    ASSERT_NE(editor, nullptr);
    editor->cmdAdd()->click(); // Gong, then "Achtung an Gleis 1" by their places
    press(editor, editor->cmdSave());
    editor->Saetze()[0].Targets[0].TimeOffset = 100;
    editor->lsvDienst()->ListItems(1)->SetSelected(true);

    const QString path = host.root.file("Satz");
    ChosenFile chosen(path);
    EXPECT_EQ(editor->mnuExport()->text(), QStringLiteral("Satz als &WAV speichern..."));
    editor->mnuExport()->trigger();
    ASSERT_TRUE(host.errors.isEmpty()) << host.errors.join(' ').toStdString();
    ASSERT_EQ(chosen.requests.size(), 1);
    EXPECT_TRUE(chosen.requests[0].save);
    EXPECT_EQ(chosen.requests[0].title, QStringLiteral("Satz als Klangdatei speichern"));
    EXPECT_EQ(chosen.requests[0].filter, QStringLiteral("WAVE-Klang [*.wav]|*.wav"));

    // The extension is added to a name without one.
    QFile file(path + ".wav");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(bytes, RenderSentenceWave(host.main->table, editor->Saetze()[0], {44100, 2}));
    SoundInfo info;
    const std::vector<float> s = tavik::test::readSound(path + ".wav", info);
    EXPECT_EQ(info.sampleRate, 44100);
    EXPECT_EQ(info.channels, 2);
    ASSERT_EQ(info.frames, frameOfMs(120 + 100 + 1 + 80 + 1, 44100)); // a tick per wait
    // The gong sounds, then the 100 ms pause after it is silent.
    float gong = 0;
    float pause = 0;
    for (qint64 f = 0; f < frameOfMs(120, 44100); ++f)
        gong = std::max(gong, std::abs(s[static_cast<std::size_t>(f * 2)]));
    for (qint64 f = frameOfMs(121, 44100); f < frameOfMs(219, 44100); ++f)
        pause = std::max(pause, std::abs(s[static_cast<std::size_t>(f * 2)]));
    EXPECT_GT(gong, 0.2f);
    EXPECT_LT(pause, 0.01f);
}

TEST(frmDienstExport, WritesTheSameBytesAsTheToolRendersFromTheSavedService) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    ASSERT_NE(editor, nullptr);
    editor->cmdAdd()->click();
    press(editor, editor->cmdSave());
    editor->mnuSave()->trigger();
    for (const auto& [box, text] : {std::pair{editor->txtTitle(), QStringLiteral("Linie 4")},
                                    std::pair{editor->txtAutor(), QStringLiteral("Tavik")},
                                    std::pair{editor->txtID(), QStringLiteral("000004")}}) {
        box->selectAll();
        box->del();
        QTest::keyClicks(box, text);
    }
    QTest::mouseClick(editor->cmdSv(), Qt::LeftButton);
    ASSERT_TRUE(QFile::exists(host.serviceFile("000004")));
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    const QString exported = host.root.file("Satz.wav");
    {
        ChosenFile chosen(exported);
        editor->mnuExport()->trigger();
    }
    ASSERT_TRUE(host.errors.isEmpty()) << host.errors.join(' ').toStdString();
    const QString rendered = host.root.file("render.wav");
    const tavik::test::ToolRun r =
        tavik::test::tool({"render", host.folder, host.serviceFile("000004"),
                           editor->lsvDienst()->ListItems(1)->Text(), "-o", rendered});
    ASSERT_EQ(r.code, 0) << r.err.toStdString();
    const QByteArray fromTool = tavik::test::readAll(rendered);
    EXPECT_GT(fromTool.size(), 44);
    EXPECT_EQ(tavik::test::readAll(exported), fromTool);
}

TEST(frmDienstExport, WithoutASelectedSentenceItAsksForOneAndWritesNothing) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    ASSERT_NE(editor, nullptr);
    ChosenFile chosen(host.root.file("Satz.wav"));
    editor->mnuExport()->trigger();
    EXPECT_TRUE(chosen.requests.isEmpty());
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_TRUE(host.messages[0].text.startsWith(QStringLiteral("Bitte wählen Sie zuerst")));
    EXPECT_FALSE(QFile::exists(host.root.file("Satz.wav")));
}

TEST(frmDienstExport, ASentenceLongerThanASoundFileCanHoldIsRefusedWithAMessage) {
    DienstHost host(station());
    frmDienst* editor = host.openEditor();
    ASSERT_NE(editor, nullptr);
    editor->cmdAdd()->click();
    press(editor, editor->cmdSave());
    // A length as a package may state it: almost 25 days.
    host.main->table.Announcements[0].Length = 2147483647;
    editor->lsvDienst()->ListItems(1)->SetSelected(true);
    const QString path = host.root.write("Satz.wav", "alt");
    ChosenFile chosen(path);
    editor->mnuExport()->trigger();
    ASSERT_TRUE(host.errors.isEmpty()) << host.errors.join(' ').toStdString();
    ASSERT_EQ(host.messages.size(), 1u);
    EXPECT_TRUE(host.messages[0].text.startsWith(
        QStringLiteral("Der Satz dauert länger, als eine Klangdatei fassen kann:")))
        << host.messages[0].text.toStdString();
    EXPECT_TRUE(host.messages[0].text.contains(path));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("alt"));
}
