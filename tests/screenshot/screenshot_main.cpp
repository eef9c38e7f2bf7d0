// Starts the editor's main window on a real X server (run under xvfb-run), loads the demo
// package and saves a picture of the window as artifacts/mainwindow.png in the build's
// source checkout, and pictures of the splash and about windows beside it. Fails when a
// window cannot be shown or a picture is blank.
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "audio/emulatorbackend.h"
#include "audio/modmci.h"
#include "log/eventlog.h"
#include "settings/language.h"
#include "shell/frmabout.h"
#include "shell/frmsplash.h"
#include "support/buildpaths.h"
#include "support/screenplatform.h"
#include "util/msgbox.h"
#include "util/reportlist.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

using namespace tavik;

namespace {

bool copyFolder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    for (const QFileInfo& info :
         QDir(from).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString target = to + QStringLiteral("/") + info.fileName();
        if (info.isDir() ? !copyFolder(info.filePath(), target)
                         : !QFile::copy(info.filePath(), target))
            return false;
    }
    return true;
}

int fail(const char* why) {
    std::fprintf(stderr, "screenshot: %s\n", why);
    return 1;
}

// Shows `window`, saves a picture of it as `name` in `folder`; false when it stays blank.
bool saveWindow(QWidget& window, const QString& folder, const QString& name) {
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return false;
    QTest::qWait(200);
    const QImage image = window.grab().toImage();
    const QString path = folder + QStringLiteral("/") + name;
    if (image.isNull() || image.width() < 100 || !image.save(path))
        return false;
    std::printf("screenshot: %s (%dx%d)\n", qPrintable(path), image.width(), image.height());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", tavik::test::RealScreenPlatform());
    qputenv("TAVIK_AUDIO", "null");
    TavikApplication app(argc, argv);

    // A copy of the delivered installation, so the run leaves the checkout as it was.
    QTemporaryDir root;
    const QString source = tavik::test::CheckoutPath();
    if (!copyFolder(source + QStringLiteral("/res"), root.filePath(QStringLiteral("res"))) ||
        !copyFolder(source + QStringLiteral("/Data/Beispielpaket"),
                    root.filePath(QStringLiteral("Data/Beispielpaket"))) ||
        !QDir().mkpath(root.filePath(QStringLiteral("bin"))) ||
        !QFile::copy(source + QStringLiteral("/bin/Formats.ini"),
                     root.filePath(QStringLiteral("bin/Formats.ini"))))
        return fail("cannot copy the installation");
    QFile ini(root.filePath(QStringLiteral("bin/Tavik.ini")));
    if (!ini.open(QIODevice::WriteOnly))
        return fail("cannot write the settings file");
    ini.write("[Settings]\r\nLanguage=" +
              root.filePath(QStringLiteral("res/lang/Deutsch.lng")).toLocal8Bit() + "\r\n");
    ini.close();
    qputenv("TAVIK_HOME", root.path().toLocal8Bit());
    SetMessageHandler([](const MessageRequest&) { return MsgResult::OK; });

    Language language;
    EventLog log(root.filePath(QStringLiteral("bin")), &language);
    EmulatorBackend backend;
    modMCI mci(backend, [&log](const QString& line) { log.WriteLog(line); });
    frmMain window(language, mci, log);
    window.ShowSplash = false;
    if (!window.FormLoad())
        return fail("start-up ended the program");
    window.show();
    if (!QTest::qWaitForWindowExposed(&window))
        return fail("the window was never shown");
    const QString folder = root.filePath(QStringLiteral("Data/Beispielpaket"));
    window.PackageFolder = folder;
    window.IndexFilePath = folder + QStringLiteral("/Package.io");
    window.LoadPackage();
    if (window.lsvPack()->Count() < 8)
        return fail("the demo package did not load");
    window.lsvPack()->ListItems(2)->SetSelected(true);
    QTest::qWait(300);

    const QPixmap shot = window.grab();
    const QImage image = shot.toImage();
    if (image.isNull() || image.width() < 200)
        return fail("the picture is empty");
    const QString artifacts = source + QStringLiteral("/artifacts");
    QDir().mkpath(artifacts);
    const QString path =
        artifacts + QStringLiteral("/") + test::ArtifactName(QStringLiteral("mainwindow.png"));
    if (!image.save(path))
        return fail("cannot save the picture");
    std::printf("screenshot: %s (%dx%d)\n", qPrintable(path), image.width(), image.height());

    frmAbout about(language, &window);
    if (!saveWindow(about, artifacts, test::ArtifactName(QStringLiteral("about.png"))))
        return fail("the about window was never shown");
    about.close();
    frmSplash splash(language, &window);
    if (!saveWindow(splash, artifacts, test::ArtifactName(QStringLiteral("splash.png"))))
        return fail("the splash window was never shown");
    return 0;
}
