#include "cli/standardstreams.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace tavik::cli {

void UseBinaryStandardStreams() {
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

} // namespace tavik::cli
