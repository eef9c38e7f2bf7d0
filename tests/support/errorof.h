#pragma once

#include "util/runtimeerror.h"

namespace tavik::test {

// The number of the runtime error `call` raises, or 0 when it raises none.
template <typename Call> int errorOf(Call&& call) {
    try {
        call();
    } catch (const RuntimeError& e) {
        return e.number();
    }
    return 0;
}

} // namespace tavik::test
