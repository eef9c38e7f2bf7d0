#include "quieterrors.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace tavik {

QuietErrors::QuietErrors() {
    std::fflush(stderr);
    saved_ = ::dup(STDERR_FILENO);
    const int null = ::open("/dev/null", O_WRONLY);
    if (saved_ >= 0 && null >= 0)
        ::dup2(null, STDERR_FILENO);
    if (null >= 0)
        ::close(null);
}

QuietErrors::~QuietErrors() {
    std::fflush(stderr);
    if (saved_ >= 0) {
        ::dup2(saved_, STDERR_FILENO);
        ::close(saved_);
    }
}

} // namespace tavik
