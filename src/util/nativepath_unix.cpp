#include "util/apppath.h"

namespace tavik {

QString NativePath(const QString& text) {
    QString s = text;
    s.replace(u'\\', u'/');
    return s;
}

} // namespace tavik
