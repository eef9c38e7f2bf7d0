#include "settings/language.h"
#include "shell/clicklabel.h"
#include "shell/frmabout.h"
#include "shell/frmsplash.h"
#include "shell/productinfo.h"
#include "support/tempdir.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QImage>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::TempDir;

namespace {

// An installation root with a language file naming two pictures of different sizes.
struct Installation {
    TempDir dir;
    Language language;

    Installation() {
        qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
        QDir(dir.path()).mkpath(QStringLiteral("bin"));
        QDir(dir.path()).mkpath(QStringLiteral("res"));
        QImage(30, 20, QImage::Format_RGB32).save(dir.file("res/other.png"));
        QImage(40, 10, QImage::Format_RGB32).save(dir.file("res/editor.png"));
        dir.write("res/info.txt", "Tavik Editor\r\nInfo f\xfcr alle");
        language.LanguageFile =
            dir.write("res/lang/Deutsch.lng",
                      "[_Files]\r\n2=res\\other.png\r\n3=res\\editor.png\r\n4=res\\info.txt\r\n"
                      "6=res\\info.txt\r\n[frmAbout]\r\nCaption=\xdc"
                      "ber Tavik\r\ncmdOK=&Schlie\xdf"
                      "en\r\n"
                      "[frmSplash]\r\nlblClick=Weiter\r\n");
    }
    ~Installation() { qunsetenv("TAVIK_HOME"); }
};

} // namespace

// Receives the links the about window opens.
class LinkCatcher : public QObject {
    Q_OBJECT
public:
    QList<QUrl> opened;
public Q_SLOTS:
    void open(const QUrl& url) { opened << url; }
};

TEST(ProductInfo, VersionLineShowsMajorMinorAndBuild) {
    EXPECT_EQ(VersionLine(2, 0, 5), QStringLiteral("Version 2.0 Build 5"));
    EXPECT_EQ(VersionLine(1, 2, 37), QStringLiteral("Version 1.2 Build 37"));
}

TEST(ProductInfo, TheEditorShowsPicture3AndOtherProductsPicture2) {
    EXPECT_EQ(PictureFileNumber(QStringLiteral("Tavik Editor")), 3);
    EXPECT_EQ(PictureFileNumber(QStringLiteral("Tavik Packer")), 2);
}

TEST(frmSplash, ShowsThePictureOfThisProductAndTheVersionLine) {
    Installation install;
    frmSplash splash(install.language);
    EXPECT_EQ(splash.picture()->pixmap().size(), QSize(40, 10));
    EXPECT_TRUE(splash.lblVersion()->text().startsWith(QStringLiteral("Version ")));
    EXPECT_EQ(splash.lblClick()->text(), QStringLiteral("Weiter"));
    EXPECT_TRUE(splash.windowFlags().testFlag(Qt::WindowStaysOnTopHint));

    QCoreApplication::setApplicationName(QStringLiteral("Tavik Packer"));
    frmSplash other(install.language);
    QCoreApplication::setApplicationName(QString::fromUtf16(kProductName));
    EXPECT_EQ(other.picture()->pixmap().size(), QSize(30, 20));
}

TEST(frmSplash, ClosesWhenItsTimerRunsOut) {
    Installation install;
    frmSplash splash(install.language);
    EXPECT_FALSE(splash.Timer1()->isActive());
    // Long enough to still run after show(), which processes events for a splash window.
    splash.Timer1()->setInterval(500);
    splash.show();
    EXPECT_TRUE(splash.Timer1()->isActive());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !splash.isVisible(); }, 5000));
    EXPECT_EQ(splash.result(), QDialog::Accepted);
}

TEST(frmSplash, AClickOnTheLabelClosesItAtOnce) {
    Installation install;
    frmSplash splash(install.language);
    splash.show();
    QTest::mouseClick(splash.lblClick(), Qt::LeftButton);
    EXPECT_FALSE(splash.isVisible());
    EXPECT_EQ(splash.result(), QDialog::Accepted);
}

TEST(frmSplash, ShownModallyItReturnsAlsoWhenItClosesWhileBeingShown) {
    Installation install;
    frmSplash splash(install.language);
    // Before the application's loop runs, showing a splash processes events: a timer due at
    // once closes it inside show().
    splash.Timer1()->setInterval(0);
    splash.ShowModal();
    EXPECT_FALSE(splash.isVisible());
    EXPECT_EQ(splash.result(), QDialog::Accepted);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST(frmAbout, ShowsTheInformationTextAndLabelsItself) {
    Installation install;
    frmAbout about(install.language);
    EXPECT_EQ(about.windowTitle(), QStringLiteral("Über Tavik"));
    EXPECT_EQ(about.cmdOK()->text(), QStringLiteral("&Schließen"));
    EXPECT_EQ(about.txtInfo()->toPlainText(), QStringLiteral("Tavik Editor\nInfo für alle"));
    EXPECT_EQ(about.picture()->pixmap().size(), QSize(40, 10));
    about.show();
    QTest::mouseClick(about.cmdOK(), Qt::LeftButton);
    EXPECT_FALSE(about.isVisible());
}

TEST(frmAbout, AMissingInformationFileLeavesTheTextEmpty) {
    Installation install;
    QFile::remove(install.dir.file("res/info.txt"));
    frmAbout about(install.language);
    EXPECT_EQ(about.txtInfo()->toPlainText(), QString());
}

TEST(frmAbout, TheLinksOpenTheReadMeAndAMailToTheAuthor) {
    Installation install;
    LinkCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open");
    QDesktopServices::setUrlHandler(QStringLiteral("mailto"), &catcher, "open");
    frmAbout about(install.language);
    about.show();
    QTest::mouseClick(about.homePageLink(), Qt::LeftButton);
    QTest::mouseClick(about.lblURL(), Qt::LeftButton);
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    QDesktopServices::unsetUrlHandler(QStringLiteral("mailto"));
    ASSERT_EQ(catcher.opened.size(), 2);
    EXPECT_TRUE(catcher.opened[0].toLocalFile().endsWith(QStringLiteral("res/info.txt")));
    EXPECT_EQ(catcher.opened[1].toString(),
              QStringLiteral("mailto:tavik-editor@localhost?Subject=Tavik"));
}

#include "shellwindows_test.moc"
