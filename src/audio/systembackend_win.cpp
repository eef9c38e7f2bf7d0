#include "systembackend.h"

#include "audio/emulatorbackend.h"
#include "audio/winmmbackend.h"

#include <QByteArray>

namespace tavik {

// winmm is the system's MCI. TAVIK_AUDIO chooses the project's own engine instead: "engine" plays
// through it, "null" through its silent output with the same timing (as on every system).
std::unique_ptr<MciBackend> createSystemMciBackend(bool sound) {
    const QByteArray choice = qgetenv("TAVIK_AUDIO");
    if (choice != "engine" && choice != "null")
        return std::make_unique<WinmmBackend>();
    if (!sound)
        return std::make_unique<EmulatorBackend>(MciEmulator::Clock{},
                                                 std::make_shared<NullSoundOutput>());
    return std::make_unique<EmulatorBackend>();
}

} // namespace tavik
