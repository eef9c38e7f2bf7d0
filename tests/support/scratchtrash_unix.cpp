#include "support/scratchtrash.h"

namespace tavik::test {

bool TrashCanBeScratch() {
    return true;
}

QString WhyNoScratchTrash() {
    return {};
}

} // namespace tavik::test
