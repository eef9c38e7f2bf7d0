#include "app/tavikapplication.h"
#include "support/privatecache.h"
#include "support/qtwarnings.h"

#include <gtest/gtest.h>

// Window tests run on the editor's own application object, offscreen.
int main(int argc, char** argv) {
    // Tests never sound: the emulator plays to its null output with the same timing.
    qputenv("TAVIK_AUDIO", "null");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    tavik::TavikApplication app(argc, argv);
    const tavik::test::PrivateCacheFolder cache;
    tavik::test::failOnQtWarnings();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
