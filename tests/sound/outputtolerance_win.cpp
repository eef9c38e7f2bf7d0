#include "sound/outputtolerance.h"

namespace tavik::test {

// MME hands whole buffers to the system's mixer and tells a buffer's time from its callback,
// not from when it is heard, so the engine's clock follows reports that wander by a few
// milliseconds: under Wine's PulseAudio driver up to six against the commands and four against
// the rendering were seen, most within two.
OutputTolerance OwnEngineTolerance() {
    return {8.0, 6.0};
}

} // namespace tavik::test
