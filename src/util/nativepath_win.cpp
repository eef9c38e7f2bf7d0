#include "util/apppath.h"

namespace tavik {

// Windows takes the program's "\" texts as they are.
QString NativePath(const QString& text) {
    return text;
}

} // namespace tavik
