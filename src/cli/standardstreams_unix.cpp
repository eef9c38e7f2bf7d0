#include "cli/standardstreams.h"

namespace tavik::cli {

void UseBinaryStandardStreams() {
    // Unix streams are bytes already.
}

} // namespace tavik::cli
