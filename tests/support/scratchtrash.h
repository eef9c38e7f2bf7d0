#pragma once

#include <QString>

namespace tavik::test {

// Whether a test can give the system's trash a scratch folder of its own: the freedesktop trash
// lies under XDG_DATA_HOME, which a test sets; Windows' recycle bin belongs to the system (and
// under Wine to the host), so a test cannot look into one of its own there.
bool TrashCanBeScratch();
QString WhyNoScratchTrash();

} // namespace tavik::test
