#include "service/servicebytes.h"
#include "service/servicefile.h"
#include "service/servicesentences.h"
#include "support/tempdir.h"
#include "util/runtimeerror.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace tavik;
using tavik::test::readAll;
using tavik::test::ServiceBytes;
using tavik::test::TempDir;
using Status = ServiceReadResult::Status;

namespace {

ServiceReadResult read(const QByteArray& bytes) {
    return ReadServiceBytes(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
}

SatzRecord satz(const QString& key, const QString& text, const QList<SatzTarget>& targets) {
    return {key, text, targets, static_cast<std::int16_t>(targets.size() - 1)};
}

const ServiceHeader kHeader{"Linie 4", "Tavik", "Werktags", "000000"};

} // namespace

TEST(ServiceFile, WritesLengthsTextsCountAndSentencesByteForByte) {
    const QByteArray written =
        ServiceFileBytes(kHeader, {satz("0472", "Gong Achtung ", {{"0000", 0}, {"0001", -250}}),
                                   satz("9031", "", {{"0002", 1200}})});
    const QByteArray expected =
        ServiceBytes()
            .header("Linie 4", "Tavik", "Werktags", "000000")
            .count(2)
            .sentence("0472", "Gong Achtung ", {{"0000", 0}, {"0001", -250}})
            .sentence("9031", "", {{"0002", 1200}});
    EXPECT_EQ(written.toHex(' '), expected.toHex(' '));
}

TEST(ServiceFile, HeaderTextsAreOneCp1252BytePerCharacter) {
    const QByteArray written =
        ServiceFileBytes({"Zürich €", "", "", "1"}, {satz("0001", "Bahnhof ß", {{"0000", 0}})});
    const QByteArray expected = ServiceBytes()
                                    .header("Z\xfcrich \x80", "", "", "1")
                                    .count(1)
                                    .sentence("0001", "Bahnhof \xdf", {{"0000", 0}});
    EXPECT_EQ(written.toHex(' '), expected.toHex(' '));
    const ServiceReadResult back = read(written);
    ASSERT_TRUE(back.ok());
    EXPECT_EQ(back.header.Title, "Zürich €");
    EXPECT_EQ(back.sentences[0].Text, "Bahnhof ß");
}

TEST(ServiceFile, ReadsBackEveryFieldItWrote) {
    const QList<SatzRecord> sentences = {satz("0472", "Gong ", {{"0000", 0}, {"0001", -500}}),
                                         satz("1234", "x ", {{"0003", 32767}})};
    const ServiceReadResult back = read(ServiceFileBytes(kHeader, sentences));
    ASSERT_TRUE(back.ok()) << back.problem.toStdString();
    EXPECT_EQ(back.header.Title, "Linie 4");
    EXPECT_EQ(back.header.Author, "Tavik");
    EXPECT_EQ(back.header.Description, "Werktags");
    EXPECT_EQ(back.header.Id, "000000");
    EXPECT_EQ(back.declaredCount, 2);
    ASSERT_EQ(back.sentences.size(), 2);
    EXPECT_EQ(back.sentences[0].Key, "0472");
    EXPECT_EQ(back.sentences[0].Text, "Gong ");
    ASSERT_EQ(back.sentences[0].Targets.size(), 2);
    EXPECT_EQ(back.sentences[0].Targets[1].AnnouncementKey, "0001");
    EXPECT_EQ(back.sentences[0].Targets[1].TimeOffset, -500);
    EXPECT_EQ(back.sentences[0].LastTarget, 1);
    EXPECT_EQ(back.sentences[1].Targets[0].TimeOffset, 32767);
}

TEST(ServiceFile, ASentenceNeverSavedOnItsPageIsWrittenWithZeroDimensionsAndLastTargetZero) {
    ServiceSentences state;
    RandomGenerator generator(7, [] { return 100.0; });
    const std::int16_t saved = state.CreateItem(generator);
    const std::int16_t unsaved = state.CreateItem(generator);
    AnnouncementTable table;
    table.Announcements = {{"Gong", {}, "0000", 900, true, -1, 0, false}};
    table.AnnouncementCount = 1;
    SaveIntoArray(state.Saetze[saved], {{"0", "0000"}}, table);

    TempDir dir;
    const QString path = dir.file("_1._");
    const QString savedKey = state.Saetze[saved].Key;
    const QString unsavedKey = state.Saetze[unsaved].Key;
    SaveToFile(path, {"T", "", "", "1"}, state, {savedKey, unsavedKey});
    const QByteArray expected = ServiceBytes()
                                    .header("T", "", "", "1")
                                    .count(2)
                                    .sentence(savedKey.toLatin1(), "Gong ", {{"0000", 0}})
                                    .unsetSentence(unsavedKey.toLatin1(), 0);
    EXPECT_EQ(readAll(path).toHex(' '), expected.toHex(' '));

    const ServiceReadResult back = ReadServiceFile(path);
    ASSERT_TRUE(back.ok());
    EXPECT_FALSE(back.sentences[1].TargetsDimensioned);
    EXPECT_TRUE(back.sentences[1].Targets.isEmpty());
    EXPECT_EQ(back.sentences[1].LastTarget, 0);
    EXPECT_EQ(back.sentences[1].Text, "");
}

TEST(ServiceFile, AShorterServiceOverALongerFileKeepsTheOldTailAndReadsByCounts) {
    TempDir dir;
    const QString path = dir.file("_000000._");
    const QByteArray longer = ServiceBytes()
                                  .header("Langer Dienst", "Autor", "Beschreibung", "000000")
                                  .count(2)
                                  .sentence("0001", "a ", {{"0000", 0}, {"0001", 0}})
                                  .sentence("0002", "b ", {{"0002", 0}});
    const QByteArray shorter = ServiceBytes()
                                   .header("Kurz", "", "", "000000")
                                   .count(1)
                                   .sentence("0003", "", {{"0000", 5}});
    ASSERT_LT(shorter.size(), longer.size());
    WriteServiceFile(path, longer);
    WriteServiceFile(
        path, ServiceFileBytes({"Kurz", "", "", "000000"}, {satz("0003", "", {{"0000", 5}})}));
    EXPECT_EQ(readAll(path), shorter + longer.mid(shorter.size()));

    const ServiceReadResult back = ReadServiceFile(path);
    ASSERT_TRUE(back.ok()) << back.problem.toStdString();
    EXPECT_EQ(back.header.Title, "Kurz");
    ASSERT_EQ(back.sentences.size(), 1);
    EXPECT_EQ(back.sentences[0].Key, "0003");
}

TEST(ServiceFile, ALongerServiceReplacesAShorterFileWhole) {
    TempDir dir;
    const QString path = dir.file("_1._");
    WriteServiceFile(path, "abc");
    const QByteArray bytes = ServiceFileBytes(kHeader, {satz("0001", "", {{"0000", 0}})});
    WriteServiceFile(path, bytes);
    EXPECT_EQ(readAll(path), bytes);
}

TEST(ServiceFile, WritingIntoAMissingFolderRaisesPathNotFound) {
    TempDir dir;
    try {
        WriteServiceFile(dir.file("nowhere/_1._"), "x");
        FAIL() << "no error raised";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), rt::PathNotFound);
    }
}

TEST(ServiceFile, AMissingFileAsksForMessage13) {
    TempDir dir;
    const ServiceReadResult r = ReadServiceFile(dir.file("_none._"));
    EXPECT_EQ(r.status, Status::Missing);
    EXPECT_EQ(r.runtimeError, 0);
    EXPECT_EQ(kServiceMissingMessage, 13);
}

TEST(ServiceFile, AnEmptyFileIsDeletedOnOpenAndCountsAsMissing) {
    TempDir dir;
    const QString path = dir.write("_0._", {});
    EXPECT_EQ(ReadServiceFile(path).status, Status::Missing);
    EXPECT_FALSE(QFile::exists(path));
}

TEST(ServiceFile, AnEmptyFileIsKeptWhenTheReaderOnlyLooks) {
    TempDir dir;
    const QString path = dir.write("_0._", {});
    EXPECT_EQ(ReadServiceFile(path, false).status, Status::Missing);
    EXPECT_TRUE(QFile::exists(path));
}

TEST(ServiceFile, ASentenceCountOfZeroRaisesTheSubscriptError) {
    const ServiceReadResult r = read(ServiceBytes().header("T", "", "", "1").count(0));
    EXPECT_EQ(r.status, Status::NoService);
    EXPECT_EQ(r.runtimeError, rt::SubscriptOutOfRange);
    EXPECT_EQ(r.header.Title, "T");
    EXPECT_TRUE(r.sentences.isEmpty());
}

TEST(ServiceFile, ANegativeSentenceCountRaisesTheSubscriptError) {
    const ServiceReadResult r = read(ServiceBytes().header("T", "", "", "1").count(-3));
    EXPECT_EQ(r.runtimeError, rt::SubscriptOutOfRange);
}

TEST(ServiceFile, ATruncatedFileKeepsTheSentencesReadAndRaisesReadPastEnd) {
    const QByteArray whole = ServiceBytes()
                                 .header("T", "", "", "1")
                                 .count(3)
                                 .sentence("0001", "a ", {{"0000", 0}})
                                 .sentence("0002", "b ", {{"0001", 0}, {"0002", 0}});
    for (qsizetype cut = whole.size() - 1; cut > 0; --cut) {
        const ServiceReadResult r = read(whole.left(cut));
        EXPECT_EQ(r.status, Status::Truncated) << cut;
        EXPECT_EQ(r.runtimeError, rt::InputPastEnd) << cut;
        EXPECT_LE(r.sentences.size(), 2) << cut;
    }
    const ServiceReadResult full = read(whole);
    EXPECT_EQ(full.status, Status::Truncated); // the third sentence is missing
    ASSERT_EQ(full.sentences.size(), 2);
    EXPECT_EQ(full.sentences[1].Targets.size(), 2);
}

TEST(ServiceFile, ANegativeHeaderLengthRaisesTheInvalidCallErrorBeforeAnyText) {
    const QByteArray bytes = ServiceBytes().i32(3).i32(-1).i32(0).i32(0).raw("abc").count(1);
    const ServiceReadResult r = read(bytes);
    EXPECT_EQ(r.status, Status::Broken);
    EXPECT_EQ(r.runtimeError, rt::InvalidCall);
    EXPECT_EQ(r.header.Title, "");
}

TEST(ServiceFile, HugeLengthsAndCountsInATinyFileEndAsTruncated) {
    const QByteArray hugeText = ServiceBytes().i32(0x7fffffff).i32(0).i32(0).i32(0).raw("abc");
    EXPECT_EQ(read(hugeText).status, Status::Truncated);

    ServiceBytes hugeCount;
    hugeCount.header("T", "", "", "1").count(32767);
    hugeCount.counted("0001").counted("").u16(1).i32(0x7fffffff).i32(0);
    const ServiceReadResult r = read(hugeCount);
    EXPECT_EQ(r.status, Status::Truncated);
    EXPECT_TRUE(r.sentences.isEmpty());
}

TEST(ServiceFile, AnEntryArrayOfTwoDimensionsOrAnotherLowerBoundIsBroken) {
    const QByteArray twoDims =
        ServiceBytes().header("T", "", "", "1").count(1).counted("0001").counted("").u16(2);
    EXPECT_EQ(read(twoDims).status, Status::Broken);
    const QByteArray lowerBound = ServiceBytes()
                                      .header("T", "", "", "1")
                                      .count(1)
                                      .counted("0001")
                                      .counted("")
                                      .u16(1)
                                      .i32(1)
                                      .i32(1)
                                      .counted("0000")
                                      .i16(0)
                                      .i16(0);
    const ServiceReadResult r = read(lowerBound);
    EXPECT_EQ(r.status, Status::Broken);
    EXPECT_EQ(r.runtimeError, rt::SubscriptOutOfRange);
}

TEST(GetFileInfo, ReadsTitleAuthorAndDescription) {
    TempDir dir;
    const QString path = dir.write(
        "_7._",
        ServiceBytes().header("Linie 7", "Tavik", "Nachts", "7").count(1).unsetSentence("0001"));
    QString title, author, description;
    GetFileInfo(path, title, author, description);
    EXPECT_EQ(title, "Linie 7");
    EXPECT_EQ(author, "Tavik");
    EXPECT_EQ(description, "Nachts");
}

TEST(GetFileInfo, AFailingTextIsSkippedAndTheOthersStillRead) {
    TempDir dir;
    const QString path =
        dir.write("_7._", ServiceBytes().i32(-5).i32(2).i32(0x7fffffff).i32(0).raw("abcdef"));
    QString title, author, description;
    GetFileInfo(path, title, author, description);
    EXPECT_EQ(title, "");
    EXPECT_EQ(author, "ab");
    EXPECT_EQ(description, "cdef");
}

TEST(GetFileInfo, AMissingFileLeavesEverythingEmpty) {
    TempDir dir;
    QString title, author, description;
    GetFileInfo(dir.file("_x._"), title, author, description);
    EXPECT_TRUE(title.isEmpty() && author.isEmpty() && description.isEmpty());
}
