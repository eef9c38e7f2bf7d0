#include "package_index_input.h"

#include <QCoreApplication>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (!tavik::fuzz::packageIndexInput(data, size))
        std::abort();
    return 0;
}
