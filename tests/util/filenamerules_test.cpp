#include "util/filenamerules.h"

#include <gtest/gtest.h>

using namespace tavik;

TEST(FileNameRules, DeviceNamesAreKnownInAnyCaseAloneAndBeforeAnExtension) {
    for (const char* name :
         {"CON", "con", "Prn", "AUX", "nul", "COM1", "com9", "LPT1", "lpt9", "aux.wav", "NUL.txt",
          "con .io", "COM\u00B9", "lpt\u00B3.dat", "Aux.tar.gz"})
        EXPECT_TRUE(IsDeviceName(QString::fromUtf8(name))) << name;
    for (const char* name : {"CONSOLE", "conx", "COM0", "COM10", "LPT", "xaux.wav", "_CON._",
                             "0000.wav", "Package.io", "NULL", "con_1", ""})
        EXPECT_FALSE(IsDeviceName(QString::fromUtf8(name))) << name;
}

TEST(FileNameRules, TrailingDotsAndBlanksAreTrimmedNamesAndOthersAreNot) {
    for (const char* name : {"Paket.", "Paket ", "Paket. ", "a..", "."})
        EXPECT_TRUE(IsTrimmedName(QString::fromUtf8(name))) << name;
    for (const char* name : {"Paket", ".hidden", "a.b", " lead", "_000001._"})
        EXPECT_FALSE(IsTrimmedName(QString::fromUtf8(name))) << name;
    EXPECT_TRUE(IsPortableName(QStringLiteral("Linie 7")));
    EXPECT_FALSE(IsPortableName(QStringLiteral("Linie 7 ")));
    EXPECT_FALSE(IsPortableName(QStringLiteral("com1.wav")));
}
