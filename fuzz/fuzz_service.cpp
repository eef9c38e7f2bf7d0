#include "service_input.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!tavik::fuzz::serviceInput(data, size))
        std::abort();
    return 0;
}
