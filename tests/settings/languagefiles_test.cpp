// The language files delivered with the program hold every text the editor asks for.
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/windowtexts.h"

#include "util/apppath.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

class DeliveredLanguageFile : public ::testing::TestWithParam<const char*> {
protected:
    QString path() const { return LanguageFolder() + QString::fromLatin1(GetParam()) + ".lng"; }
    Language language() const {
        Language lang;
        lang.LanguageFile = path();
        return lang;
    }
    QString value(const QString& section, const QString& key) const {
        return ReadLanguageValue(path(), section, key);
    }
};

} // namespace

TEST_P(DeliveredLanguageFile, IsCodePageTextWithWindowsLineEnds) {
    QFile f(path());
    ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << path().toStdString();
    const QByteArray bytes = f.readAll();
    ASSERT_FALSE(bytes.isEmpty());
    EXPECT_FALSE(bytes.startsWith("\xef\xbb\xbf")) << "no UTF-8 mark";
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\n') {
            ASSERT_TRUE(i > 0 && bytes[i - 1] == '\r') << "bare line feed at byte " << i;
        }
        ASSERT_NE(bytes[i], '\0');
    }
    // UTF-8 sequences for umlauts would show up as "Ã".
    EXPECT_FALSE(bytes.contains("\xc3\xa4") || bytes.contains("\xc3\xb6"));
}

TEST_P(DeliveredLanguageFile, HasCompleteHeader) {
    for (const char* key : {"Name", "FileVersion", "Autor"})
        EXPECT_FALSE(value("_Language", key).isEmpty()) << key;
}

TEST_P(DeliveredLanguageFile, HoldsEveryNumberedText) {
    const Language lang = language();
    for (const LangTextUse& use : UsedLangTexts()) {
        const QString raw = value("_String", QString::number(use.number));
        EXPECT_FALSE(raw.isEmpty()) << "text " << use.number;
        EXPECT_FALSE(lang.GetLangString(use.number).trimmed().isEmpty()) << "text " << use.number;
    }
}

TEST_P(DeliveredLanguageFile, NamesExactlyThePlaceholdersTheCallerFills) {
    for (const LangTextUse& use : UsedLangTexts()) {
        const QString raw = value("_String", QString::number(use.number));
        for (int a = 1; a <= 5; ++a) {
            const bool named = raw.contains(QLatin1Char('%') + QString::number(a));
            EXPECT_EQ(named, a <= use.arguments) << "text " << use.number << " %" << a;
        }
    }
}

TEST_P(DeliveredLanguageFile, FilledTextShowsTheCallersValues) {
    const QString s =
        language().GetLangString(LangText::SoundFileMissing, "0007", "Zug fährt ein", "", "", "");
    EXPECT_TRUE(s.contains("0007"));
    EXPECT_TRUE(s.contains(QStringLiteral("Zug fährt ein")));
    EXPECT_FALSE(s.contains(QLatin1Char('%')));
}

TEST_P(DeliveredLanguageFile, NamesFilesThatExist) {
    const Language lang = language();
    for (std::int16_t n : UsedLangFiles()) {
        const QString file = lang.GetLangFile(n);
        ASSERT_FALSE(file.isEmpty()) << "file " << n;
        const QFileInfo info(file);
        EXPECT_TRUE(info.isFile() && info.size() > 0) << file.toStdString();
    }
}

TEST_P(DeliveredLanguageFile, LabelsEveryWindowAndControl) {
    for (const WindowTexts& w : LocalisedWindows()) {
        EXPECT_FALSE(value(w.window, "Caption").isEmpty()) << w.window;
        for (const char* control : w.controls) {
            const QString v = value(w.window, control);
            EXPECT_FALSE(v.isEmpty()) << w.window << "." << control;
            // A caption-less value is meant for a picture button: it must give a tool tip.
            const ControlText t = ParseControlText(v);
            EXPECT_FALSE(t.caption.isEmpty() && t.toolTip.isEmpty()) << w.window << "." << control;
        }
    }
}

TEST_P(DeliveredLanguageFile, MenusCarryNoToolTip) {
    for (const WindowTexts& w : LocalisedWindows()) {
        for (const char* control : w.controls) {
            if (!QString::fromLatin1(control).startsWith("mnu"))
                continue;
            EXPECT_FALSE(value(w.window, control).contains(QLatin1Char('|')))
                << w.window << "." << control;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Delivered, DeliveredLanguageFile, ::testing::Values("Deutsch", "English"));

TEST(DeliveredLanguageFiles, GermanKeepsTheDesignedCaptions) {
    const QString de = LanguageFolder() + "Deutsch.lng";
    EXPECT_EQ(ReadLanguageValue(de, "frmLanguage", "Caption"), QStringLiteral("Sprachauswahl"));
    EXPECT_EQ(ReadLanguageValue(de, "frmMain", "cmdOpen").section('|', 0, 0),
              QStringLiteral("&Öffnen"));
    EXPECT_EQ(ReadLanguageValue(de, "frmSetting", "chkPlace"), QStringLiteral("Standartplatz"));
    EXPECT_EQ(ReadLanguageValue(de, "frmOptions", "Label1"),
              QStringLiteral(
                  "Bei Wiedergabe-Problemen, kann eventuell die folgenden Einstellung helfen:"));
}
