#include "settings/modini.h"
#include "util/apppath.h"

#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>

using namespace tavik;

namespace {

// The delivered formats file of the checkout's program folder.
QString formatsFile() {
    qunsetenv("TAVIK_HOME");
    return AppPath() + QStringLiteral("\\Formats.ini");
}

QString read(const QString& section, const QString& key) {
    return ReadINI(formatsFile(), section, key, Variant::fromString(QString())).stringValue();
}

} // namespace

TEST(FormatsIni, InstalledListsTheFormatsInOrderAndTheScanStopsAtTheFirstEmptyKey) {
    QStringList formats;
    for (int i = 1; i < 100; ++i) {
        const QString ext = read("Installed", QString::number(i));
        if (ext.isEmpty())
            break;
        formats << QStringLiteral("*.") + ext;
    }
    EXPECT_EQ(formats, (QStringList{"*.wav", "*.mp3", "*.ogg", "*.flac"}));
}

TEST(FormatsIni, EachFormatNamesItsDeviceType) {
    EXPECT_EQ(read("wav", "Format"), QStringLiteral("waveaudio"));
    EXPECT_EQ(read("mp3", "Format"), QStringLiteral("mpegvideo"));
    EXPECT_EQ(read("ogg", "Format"), QStringLiteral("mpegvideo"));
    EXPECT_EQ(read("flac", "Format"), QStringLiteral("mpegvideo"));
    EXPECT_EQ(read("aiff", "Format"), QString());
}

TEST(FormatsIni, FileHasCrLfLineEnds) {
    QFile file(QString(formatsFile()).replace(u'\\', u'/'));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_EQ(bytes.count('\n'), bytes.count("\r\n"));
    EXPECT_TRUE(bytes.endsWith("\r\n"));
}
