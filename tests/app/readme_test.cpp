// "Readme" opens the readme file the language file names, and says so when there is none.
#include "app/frmmain.h"
#include "settings/langtexts.h"
#include "support/editorfixture.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::EditorFixture;

namespace {

// Takes the URLs the editor asks the system to open, instead of the system.
class OpenedUrls : public QObject {
    Q_OBJECT
public:
    OpenedUrls() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~OpenedUrls() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl& url) { urls << url; }
};

} // namespace

TEST(Readme, OpensTheReadmeFileTheLanguageNames) {
    EditorFixture editor(QStringLiteral("English.lng"));
    ASSERT_TRUE(editor.main->FormLoad());
    const QString readme = editor.language.GetLangFile(LangFile::Readme);
    QDir().mkpath(QFileInfo(readme).absolutePath());
    QFile file(readme);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("Tavik Editor\n");
    file.close();
    OpenedUrls opened;
    editor.messages.clear();
    editor.main->mnuReadme()->trigger();
    EXPECT_TRUE(editor.messages.empty());
    ASSERT_EQ(opened.urls.size(), 1);
    EXPECT_TRUE(opened.urls[0].toLocalFile().endsWith(QStringLiteral("readme_en.txt")));
}

TEST(Readme, WithoutAReadmeFileAMessageInTheEditorsLanguageNamesIt) {
    for (const char* file : {"English.lng", "Deutsch.lng"}) {
        EditorFixture editor{QString::fromLatin1(file)};
        ASSERT_TRUE(editor.main->FormLoad());
        const QString readme = editor.language.GetLangFile(LangFile::Readme);
        QFile::remove(readme);
        ASSERT_FALSE(QFileInfo::exists(readme)) << readme.toStdString();
        OpenedUrls opened;
        editor.messages.clear();
        editor.main->mnuReadme()->trigger();
        EXPECT_TRUE(opened.urls.isEmpty());
        ASSERT_EQ(editor.messages.size(), 1u);
        const QString expected = QString::fromLatin1(file) == u"English.lng"
                                     ? QStringLiteral("There is no readme file")
                                     : QStringLiteral("Es gibt keine Readme-Datei");
        EXPECT_TRUE(editor.messages[0].text.startsWith(expected))
            << editor.messages[0].text.toStdString();
        EXPECT_TRUE(editor.messages[0].text.contains(QStringLiteral("readme_")));
        EXPECT_EQ(editor.messages[0].icon, MsgIcon::Exclamation);
    }
}

#include "readme_test.moc"
