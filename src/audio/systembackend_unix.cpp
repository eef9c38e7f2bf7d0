#include "systembackend.h"

#include "audio/emulatorbackend.h"

namespace tavik {

std::unique_ptr<MciBackend> createSystemMciBackend(bool sound) {
    if (!sound)
        return std::make_unique<EmulatorBackend>(MciEmulator::Clock{},
                                                 std::make_shared<NullSoundOutput>());
    return std::make_unique<EmulatorBackend>();
}

} // namespace tavik
