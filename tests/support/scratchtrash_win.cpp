#include "support/scratchtrash.h"

namespace tavik::test {

bool TrashCanBeScratch() {
    return false;
}

QString WhyNoScratchTrash() {
    return QStringLiteral("the recycle bin is the system's own (under Wine the host's): a test "
                          "cannot give it a scratch folder to look into");
}

} // namespace tavik::test
