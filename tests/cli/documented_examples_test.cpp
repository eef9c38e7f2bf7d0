#include "cli/commandhelp.h"
#include "support/buildpaths.h"
#include "support/tempdir.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <gtest/gtest.h>

using tavik::test::TempDir;

namespace {

struct ShellRun {
    int code = -1;
    QString out;
    QString err;
};

// Runs shell lines in an installation root with its bin folder first on the path, as a user
// who installed the programs would.
ShellRun runInRoot(const QString& root, const QString& script) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.remove(QStringLiteral("TAVIK_HOME"));
    env.insert(QStringLiteral("TAVIK_AUDIO"), QStringLiteral("null"));
    env.insert(QStringLiteral("PATH"), root + QStringLiteral("/bin:") + env.value("PATH"));
    p.setProcessEnvironment(env);
    p.setWorkingDirectory(root);
    p.start(QStringLiteral("/bin/sh"), {QStringLiteral("-e"), QStringLiteral("-c"), script});
    p.waitForFinished(300000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1,
            QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

bool copyTree(const QString& from, const QString& to) {
    QDir().mkpath(to);
    const QDir source(from);
    for (const QFileInfo& info : source.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot)) {
        const QString target = to + u'/' + info.fileName();
        if (info.isDir() ? !copyTree(info.filePath(), target)
                         : !QFile::copy(info.filePath(), target))
            return false;
    }
    return true;
}

// A fresh installation made by `cmake --install`, whose data folder each example gets afresh.
class FreshInstallation {
public:
    FreshInstallation() {
        QProcess p;
        p.start(tavik::test::CMakeCommand(),
                {"--install", tavik::test::BuildDir(), "--prefix", root()});
        p.waitForFinished(300000);
        installed_ = p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0 &&
                     copyTree(root() + "/Data", dir_.file("pristine"));
    }
    bool installed() const { return installed_; }
    QString root() const { return dir_.file("root"); }
    // Everything an earlier example made or changed goes.
    bool reset() {
        return QDir(root() + "/Data").removeRecursively() &&
               copyTree(dir_.file("pristine"), root() + "/Data");
    }

private:
    TempDir dir_;
    bool installed_ = false;
};

// The indented block of the README that follows its paragraph "Example ...".
QStringList readmeExample() {
    QFile file(tavik::test::CheckoutPath(QStringLiteral("/README.md")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    const qsizetype start = lines.indexOf(QRegularExpression(QStringLiteral("Example .*")));
    const qsizetype blank = start < 0 ? -1 : lines.indexOf(QString(), start);
    QStringList example;
    for (qsizetype i = blank + 1; blank >= 0 && i < lines.size(); ++i) {
        if (!lines[i].startsWith(QStringLiteral("    ")))
            break;
        example << lines[i].mid(4);
    }
    return example;
}

} // namespace

TEST(DocumentedExamples, EveryHelpExampleRunsInAFreshInstallation) {
    FreshInstallation installation;
    ASSERT_TRUE(installation.installed());
    int examples = 0;
    for (const tavik::cli::CommandHelp& help : tavik::cli::AllCommandHelp()) {
        for (const QString& example : help.examples) {
            ASSERT_TRUE(installation.reset());
            const ShellRun r = runInRoot(installation.root(), example);
            EXPECT_EQ(r.code, 0) << example.toStdString() << "\n" << r.err.toStdString();
            ++examples;
        }
    }
    EXPECT_EQ(examples, 13);
}

TEST(DocumentedExamples, TheReadmeExampleRunsInAFreshInstallation) {
    const QStringList example = readmeExample();
    ASSERT_GE(example.size(), 10);
    FreshInstallation installation;
    ASSERT_TRUE(installation.installed());
    // The README's scratch folder under /tmp becomes this test's own.
    TempDir scratch;
    QString script = example.join(u'\n');
    script.replace(QStringLiteral("/tmp/"), scratch.path() + u'/');
    const ShellRun r = runInRoot(installation.root(), script);
    EXPECT_EQ(r.code, 0) << r.err.toStdString();
    EXPECT_TRUE(QFile::exists(scratch.file("Daten/Linie7/Package.io")));
    EXPECT_TRUE(QFile::exists(scratch.file("Satz.wav")));
    EXPECT_TRUE(r.out.contains(QStringLiteral("no findings"))) << r.out.toStdString();
}
