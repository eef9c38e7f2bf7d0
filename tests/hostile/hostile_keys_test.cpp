// What a hostile package can name: keys that are no numbers, service IDs that leave the
// folder, sentences the editor does not hold, and settings that are no Booleans.
#include "hostile/hostilecorpus.h"
#include "package/packagefolder.h"
#include "service/servicefiles.h"
#include "service/servicesentences.h"
#include "settings/useformat.h"
#include "support/errorof.h"
#include "support/tempdir.h"
#include "util/apppath.h"
#include "util/runtimeerror.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::errorOf;
using tavik::test::TempDir;

TEST(HostileKeys, AKeyThatIsNoNumberFindsNoFileNeitherTheFixedFilesNorAnotherSound) {
    TempDir dir;
    const QString folder = dir.file("Data/Feindlich");
    test::writeHostilePackage(dir.path(), folder);
    const PackageFileList files(folder);
    for (const QString& entry : test::hostileIndexEntries()) {
        const QString key = entry.left(entry.indexOf(u'~'));
        const QString expected = test::keysWithSound().contains(key)
                                     ? NativePath(folder + u'\\' + key + QStringLiteral(".wav"))
                                     : QString();
        EXPECT_EQ(GetFileName(folder, key), expected) << key.toStdString();
        EXPECT_EQ(files.GetFileName(key), expected) << key.toStdString();
    }
}

TEST(HostileKeys, AKeyNeverFindsTheFileOfALongerKey) {
    TempDir dir;
    dir.write("10000.wav", "x");
    dir.write("00012.wav", "x");
    dir.write("0001 Kopie.wav", "x");
    dir.write("0002.wav", "x");
    const PackageFileList files(dir.path());
    for (const char* key : {"1000", "000", "00", "0", "0012", "1"}) {
        EXPECT_EQ(GetFileName(dir.path(), key), QString()) << key;
        EXPECT_EQ(files.GetFileName(key), QString()) << key;
    }
    // A name that goes on with anything but a digit is the key's file.
    EXPECT_EQ(GetFileName(dir.path(), "0001"), NativePath(dir.path() + "\\0001 Kopie.wav"));
    EXPECT_EQ(files.GetFileName("0001"), NativePath(dir.path() + "\\0001 Kopie.wav"));
    EXPECT_EQ(files.GetFileName("10000"), NativePath(dir.path() + "\\10000.wav"));
    EXPECT_EQ(files.GetFileName("0002"), NativePath(dir.path() + "\\0002.wav"));
}

TEST(HostileKeys, OnlyTheDigitsZeroToNineMakeAKey) {
    for (const char* key : {"0000", "0007", "1234", "10000", "000"})
        EXPECT_TRUE(IsAnnouncementKey(QString::fromLatin1(key))) << key;
    for (const QString& key :
         {QString(), QStringLiteral(" 0001"), QStringLiteral("0001 "), QStringLiteral("Package.i"),
          QStringLiteral("0000.wav"), QStringLiteral("-001"), QStringLiteral("+001"),
          QStringLiteral("all"), QStringLiteral("0*"), QStringLiteral("00?0"),
          QStringLiteral("../0000"), QString::fromUtf16(u"\u0661\u0662\u0663\u0664"),
          QString::fromUtf16(u"\uff10\uff10\uff10\uff10")})
        EXPECT_FALSE(IsAnnouncementKey(key)) << key.toStdString();
}

TEST(HostileServiceIds, AnIdWithASeparatorDotsAColonOrAControlCharacterNamesNoFile) {
    for (const QString& id :
         {QStringLiteral("/../../../evil"), QStringLiteral("\\..\\..\\..\\evil"),
          QStringLiteral("a/b"), QStringLiteral("a\\b"), QStringLiteral(".."),
          QStringLiteral("x..y"), QStringLiteral("C:evil"), QStringLiteral(":"),
          QString(QStringLiteral("ev") + QChar(0) + QStringLiteral("il")), QStringLiteral("ev\til"),
          QStringLiteral("evil\r\n"), QString::fromUtf16(u"ev\u007fil"),
          QString::fromUtf16(u"ev\u0085il")})
        EXPECT_FALSE(IsServiceId(id)) << id.toStdString();
    // The ID is otherwise free text, the empty one included.
    for (const QString& id :
         {QString(), QStringLiteral("000000"), QStringLiteral("Linie 4"), QStringLiteral("."),
          QStringLiteral("a.b"), QString::fromUtf16(u"Zürich-Ost"), QStringLiteral("*")})
        EXPECT_TRUE(IsServiceId(id)) << id.toStdString();
}

TEST(HostileSentences, ASentenceKeyNotFoundWithinTheSlotsIsTheSubscriptError) {
    ServiceSentences s;
    s.Saetze = {SatzRecord{}, SatzRecord{}, SatzRecord{}};
    s.Saetze[0].Key = QStringLiteral("1111");
    s.Saetze[2].Key = QStringLiteral("3333");
    s.SatzCount = 0;
    // The search stops at SatzCount + 1 without a match: -1, which no caller may use.
    ASSERT_EQ(s.FindTargetByKey(QStringLiteral("3333")), -1);
    EXPECT_EQ(errorOf([&] { s.SentenceIndex(QStringLiteral("3333")); }), rt::SubscriptOutOfRange);
    EXPECT_EQ(errorOf([&] {
                  s.SentencesInOrder({QStringLiteral("1111"), QStringLiteral("3333")});
              }),
              rt::SubscriptOutOfRange);
    EXPECT_EQ(s.SentenceIndex(QStringLiteral("1111")), 0);
    // A key the search runs past stays the subscript error, as designed.
    s.Saetze = {SatzRecord{}};
    s.SatzCount = 1;
    EXPECT_EQ(errorOf([&] { s.SentenceIndex(QStringLiteral("9999")); }), rt::SubscriptOutOfRange);
}

TEST(HostileSettings, AUseFormatThatIsNoBooleanGivesTheDefaultAndTellsTheCaller) {
    TempDir dir;
    QDir(dir.path()).mkpath("bin");
    qputenv("TAVIK_HOME", dir.path().toLocal8Bit());
    const auto read = [&](const QByteArray& line, QList<int>& errors) {
        dir.write("bin/Tavik.ini", "[SOUND]\r\n" + line + "\r\n");
        return ReadUseFormat([&](const RuntimeError& e) { errors << e.number(); });
    };
    QList<int> errors;
    EXPECT_FALSE(read("UseFormat=", errors));
    EXPECT_FALSE(read("UseFormat=abc", errors));
    EXPECT_EQ(errors, (QList<int>{rt::TypeMismatch, rt::TypeMismatch}));
    errors.clear();
    EXPECT_TRUE(read("UseFormat=1", errors));
    EXPECT_TRUE(read("UseFormat=True", errors));
    EXPECT_FALSE(read("UseFormat=0", errors));
    EXPECT_FALSE(read("Other=1", errors));
    EXPECT_TRUE(errors.isEmpty()) << errors.size();
    // A missing settings file gives the default, without an error.
    QFile::remove(dir.file("bin/Tavik.ini"));
    EXPECT_FALSE(ReadUseFormat([&](const RuntimeError& e) { errors << e.number(); }));
    EXPECT_TRUE(errors.isEmpty()) << errors.size();
    // Without a receiver the default is taken silently.
    dir.write("bin/Tavik.ini", "[SOUND]\r\nUseFormat=abc\r\n");
    EXPECT_FALSE(ReadUseFormat());
    qunsetenv("TAVIK_HOME");
}
