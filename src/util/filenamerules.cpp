#include "filenamerules.h"

namespace tavik {

namespace {

bool isDeviceDigit(QChar c) {
    return (c >= u'1' && c <= u'9') || c == u'\u00B9' || c == u'\u00B2' || c == u'\u00B3';
}

} // namespace

bool IsDeviceName(const QString& name) {
    // The stem before the first dot, without the blanks Windows drops before it.
    QString stem = name.left(name.indexOf(u'.') < 0 ? name.size() : name.indexOf(u'.'));
    while (stem.endsWith(u' '))
        stem.chop(1);
    stem = stem.toUpper();
    if (stem == u"CON" || stem == u"PRN" || stem == u"AUX" || stem == u"NUL")
        return true;
    return stem.size() == 4 && (stem.startsWith(u"COM") || stem.startsWith(u"LPT")) &&
           isDeviceDigit(stem[3]);
}

bool IsTrimmedName(const QString& name) {
    return name.endsWith(u'.') || name.endsWith(u' ');
}

} // namespace tavik
