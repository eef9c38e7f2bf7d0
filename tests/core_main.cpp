#include "support/privatecache.h"
#include "support/qtwarnings.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // Tests never sound: the emulator plays to its null output with the same timing.
    qputenv("TAVIK_AUDIO", "null");
    QCoreApplication app(argc, argv);
    const tavik::test::PrivateCacheFolder cache;
    tavik::test::failOnQtWarnings();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
