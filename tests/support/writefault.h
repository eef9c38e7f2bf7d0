#pragma once

#include "util/fileops.h"

#include <cerrno>

namespace tavik::test {

// Makes one of the coming checked writes fail (see InjectWriteFault) for the scope of a test,
// and clears what did not fire when the scope ends.
class ScopedWriteFault {
public:
    explicit ScopedWriteFault(WriteStep step = WriteStep::Write, int systemError = ENOSPC,
                              int call = 1) {
        InjectWriteFault({call, step, systemError});
    }
    ~ScopedWriteFault() { ClearWriteFault(); }
    ScopedWriteFault(const ScopedWriteFault&) = delete;
    ScopedWriteFault& operator=(const ScopedWriteFault&) = delete;
};

} // namespace tavik::test
