#include "fuzz/service_input.h"
#include "service/servicebytes.h"
#include "service/servicefile.h"

#include <gtest/gtest.h>
#include <random>

using namespace tavik;
using tavik::test::ServiceBytes;

namespace {

QByteArray sampleService() {
    return ServiceBytes()
        .header("Linie 4", "Tavik", "Werktags", "000000")
        .count(3)
        .sentence("0472", "Gong Achtung ", {{"0000", 0}, {"0001", -500}})
        .unsetSentence("9031")
        .sentence("1234", "Z\xfcrich ", {{"0002", 1200}});
}

bool runInput(const QByteArray& bytes) {
    return fuzz::serviceInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                              static_cast<std::size_t>(bytes.size()));
}

} // namespace

TEST(ServiceHostile, TheSampleServiceIsConsistent) {
    ASSERT_TRUE(ReadServiceBytes(reinterpret_cast<const uchar*>(sampleService().constData()),
                                 sampleService().size())
                    .ok());
    EXPECT_TRUE(runInput(sampleService()));
}

TEST(ServiceHostile, ThousandsOfMutatedServicesReadWithoutInconsistency) {
    const QByteArray sample = sampleService();
    std::mt19937 rng(20261122);
    for (int run = 0; run < 5000; ++run) {
        QByteArray bytes = sample;
        const int edits = 1 + static_cast<int>(rng() % 6);
        for (int e = 0; e < edits; ++e) {
            const int pos = static_cast<int>(rng() % static_cast<unsigned>(bytes.size()));
            switch (rng() % 4) {
            case 0:
                bytes[pos] = static_cast<char>(rng());
                break;
            case 1:
                bytes[pos] = static_cast<char>(0xFF);
                break;
            case 2:
                bytes.truncate(pos);
                break;
            default:
                bytes.insert(pos, static_cast<char>(rng()));
                break;
            }
            if (bytes.isEmpty())
                bytes = "x";
        }
        ASSERT_TRUE(runInput(bytes)) << "run " << run << ": " << bytes.toHex().toStdString();
    }
}

TEST(ServiceHostile, GarbageBehindTheLastSentenceIsIgnored) {
    const QByteArray bytes = sampleService() + QByteArray(300, '\xAB');
    const ServiceReadResult r =
        ReadServiceBytes(reinterpret_cast<const uchar*>(bytes.constData()), bytes.size());
    EXPECT_TRUE(r.ok());
    EXPECT_EQ(r.sentences.size(), 3);
    EXPECT_TRUE(runInput(bytes));
}

TEST(ServiceHostile, MaximalCountsAndLengthsEverywhereStayWithinTheInput) {
    ServiceBytes bytes;
    bytes.i32(0x7fffffff).i32(0x7fffffff).i32(0x7fffffff).i32(0x7fffffff);
    EXPECT_TRUE(runInput(bytes));
    ServiceBytes sentences;
    sentences.header("", "", "", "").count(32767);
    for (int i = 0; i < 50; ++i)
        sentences.u16(0xFFFF).raw("ab");
    EXPECT_TRUE(runInput(sentences));
    ServiceBytes entries;
    entries.header("", "", "", "")
        .count(1)
        .counted("0001")
        .counted("")
        .u16(1)
        .i32(0x7fffffff)
        .i32(0);
    for (int i = 0; i < 100; ++i)
        entries.counted("").i16(0);
    const ServiceReadResult r = ReadServiceBytes(
        reinterpret_cast<const uchar*>(entries.data().constData()), entries.data().size());
    EXPECT_EQ(r.status, ServiceReadResult::Status::Truncated);
    EXPECT_TRUE(runInput(entries));
}
