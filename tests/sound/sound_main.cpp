#include "app/tavikapplication.h"
#include "support/qtwarnings.h"

#include <cstdio>
#include <gtest/gtest.h>

// The tests that play through the real output: run by tests/sound/with_pulseaudio.sh, which
// starts a sound server with a null sink and names it in PULSE_SERVER.
int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("PULSE_SERVER")) {
        std::fprintf(stderr, "tavik_sound_tests: no sound server; run it through "
                             "tests/sound/with_pulseaudio.sh\n");
        return 1;
    }
    qunsetenv("TAVIK_AUDIO");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    tavik::TavikApplication app(argc, argv);
    tavik::test::failOnQtWarnings();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
