// The import dialog's copies on a full disk and beside links: no partial sound file, nothing
// written outside the package.
#include "app/frmmain.h"
#include "dialogs/frmfile.h"
#include "support/editorfixture.h"
#include "support/errorcatcher.h"
#include "support/links.h"
#include "support/smallfilesystem.h"
#include "support/tempdir.h"
#include "support/treesnapshot.h"
#include "support/writefault.h"
#include "util/zelcmd.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <cerrno>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;
using tavik::test::ErrorCatcher;
using tavik::test::namesIn;
using tavik::test::readAll;
using tavik::test::ScopedWriteFault;
using tavik::test::SmallFileSystem;
using tavik::test::TempDir;
using tavik::test::TreeSnapshot;
using tavik::test::writeTone;

namespace {

struct Import {
    EditorFixture editor;
    TempDir sources;
    QString package;

    explicit Import(const QString& folderName = QStringLiteral("Linie1")) {
        EXPECT_TRUE(editor.main->FormLoad());
        package = editor.root.file(QStringLiteral("Data/") + folderName);
    }
    void openPackage() {
        editor.writePackage(QFileInfo(package).fileName(), QStringLiteral("Linie 1"),
                            {{QStringLiteral("0002"), QStringLiteral("Gong"), 50}});
        editor.open(package);
    }
    QString sound(const QString& name, int ms) const {
        const QString path = sources.file(name);
        EXPECT_TRUE(writeTone(path, ms * 8LL, 8000));
        return path;
    }
    void importAndConfirm(const QStringList& files) {
        frmFile dialog(*editor.main);
        dialog.AddFiles(files);
        dialog.show();
        QTest::mouseClick(dialog.cmdOK(), Qt::LeftButton);
        if (dialog.isVisible())
            QTest::mouseClick(dialog.cmdCancel(), Qt::LeftButton);
    }
};

} // namespace

TEST(ImportWrites, ALinkNamedLikeAKeyIsPassedOverAndNothingOutsideChanges) {
    Import import;
    import.openPackage();
    const QString outside = import.editor.root.write(QStringLiteral("victim.wav"), "victim");
    TAVIK_LINK_OR_SKIP(outside, import.package + QStringLiteral("/0000.wav"));
    TAVIK_LINK_OR_SKIP(import.editor.root.file(QStringLiteral("made.wav")),
                       import.package + QStringLiteral("/0001.wav"));
    const QString a = import.sound(QStringLiteral("a.wav"), 100);
    const TreeSnapshot before(import.editor.root.path(), {import.package});
    ErrorCatcher errors;
    import.importAndConfirm({a});
    EXPECT_TRUE(errors.shown.isEmpty()) << errors.shown.join(u'\n').toStdString();
    EXPECT_EQ(readAll(import.package + QStringLiteral("/0003.wav")), readAll(a));
    EXPECT_EQ(TreeSnapshot(import.editor.root.path(), {import.package}).changesSince(before),
              QStringList());
    EXPECT_EQ(import.editor.column(0), (QStringList{"0002", "0003"}));
}

TEST(ImportWrites, ACopyThatFailsLeavesThePackageAsItWas) {
    Import import;
    import.openPackage();
    const QByteArray index = readAll(import.package + QStringLiteral("/Package.io"));
    const QString a = import.sound(QStringLiteral("a.wav"), 300);
    const QString b = import.sound(QStringLiteral("b.wav"), 300);
    ErrorCatcher errors;
    ScopedWriteFault fault(WriteStep::Write, ENOSPC, 2);
    import.importAndConfirm({a, b});
    ASSERT_EQ(errors.shown.size(), 1);
    EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("'61'"))) << errors.shown[0].toStdString();
    // All or nothing: the first file's copy goes again with the failure of the second.
    EXPECT_EQ(namesIn(import.package), (QStringList{"0002.wav", "Package.io"}));
    EXPECT_EQ(readAll(import.package + QStringLiteral("/Package.io")), index);
    EXPECT_EQ(import.editor.column(0), QStringList{"0002"});
}

TEST(ImportWrites, OnAFullDiskNoPartialSoundFileIsLeft) {
    Import import(QStringLiteral("Voll"));
    SmallFileSystem disk(import.package, 128 * 1024);
    if (!disk.mounted())
        GTEST_SKIP() << disk.whyNot().toStdString();
    import.openPackage();
    const QByteArray index = readAll(import.package + QStringLiteral("/Package.io"));
    // Three seconds of sound: far more than the disk has left.
    const QString big = import.sound(QStringLiteral("lang.wav"), 3000);
    disk.fill();
    const QStringList before = namesIn(import.package);
    ErrorCatcher errors;
    import.importAndConfirm({big});
    ASSERT_EQ(errors.shown.size(), 1);
    EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("'61'"))) << errors.shown[0].toStdString();
    EXPECT_EQ(namesIn(import.package), before);
    EXPECT_EQ(readAll(import.package + QStringLiteral("/Package.io")), index);
}

TEST(ImportWrites, ALinkedIndexIsRefusedWith75AndNothingOutsideChanges) {
    Import import;
    import.openPackage();
    const QString outside = import.editor.root.file(QStringLiteral("outside.io"));
    ASSERT_TRUE(QFile::rename(import.package + QStringLiteral("/Package.io"), outside));
    TAVIK_LINK_OR_SKIP(outside, import.package + QStringLiteral("/Package.io"));
    import.editor.main->lsvPack()->ClearItems();
    import.editor.open(import.package);
    const TreeSnapshot before(import.editor.root.path(), {import.package});
    ErrorCatcher errors;
    import.importAndConfirm({import.sound(QStringLiteral("a.wav"), 100)});
    ASSERT_EQ(errors.shown.size(), 1);
    EXPECT_TRUE(errors.shown[0].contains(QStringLiteral("'75'"))) << errors.shown[0].toStdString();
    EXPECT_EQ(TreeSnapshot(import.editor.root.path(), {import.package}).changesSince(before),
              QStringList());
    EXPECT_TRUE(QFileInfo(import.package + QStringLiteral("/Package.io")).isSymbolicLink());
}
