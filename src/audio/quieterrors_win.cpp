#include "quieterrors.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace tavik {

QuietErrors::QuietErrors() {
    std::fflush(stderr);
    const int error = _fileno(stderr);
    // A GUI program may have no error stream at all.
    if (error < 0)
        return;
    saved_ = _dup(error);
    const int null = _open("NUL", _O_WRONLY);
    if (saved_ >= 0 && null >= 0)
        _dup2(null, error);
    if (null >= 0)
        _close(null);
}

QuietErrors::~QuietErrors() {
    std::fflush(stderr);
    if (saved_ >= 0) {
        _dup2(saved_, _fileno(stderr));
        _close(saved_);
    }
}

} // namespace tavik
