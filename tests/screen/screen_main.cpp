#include "app/tavikapplication.h"
#include "support/screenplatform.h"

#include <cstdio>
#include <gtest/gtest.h>

// Tests of where windows appear. They need a real X server with a window manager: the
// CTest test runs them under xvfb-run with openbox (run_with_openbox.sh).
int main(int argc, char** argv) {
    qputenv("TAVIK_AUDIO", "null");
    qputenv("QT_QPA_PLATFORM", tavik::test::RealScreenPlatform());
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::fprintf(stderr, "tavik_screen_tests: needs an X display with a window manager\n");
        return 2;
    }
    tavik::TavikApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
