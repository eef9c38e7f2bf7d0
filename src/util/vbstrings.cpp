#include "vbstrings.h"

#include "runtimeerror.h"

namespace tavik {

QStringList Split(const QString& text, const QString& delimiter) {
    if (text.isEmpty())
        return {};
    if (delimiter.isEmpty())
        return {text};
    return text.split(delimiter, Qt::KeepEmptyParts, Qt::CaseSensitive);
}

const QString& PartAt(const QStringList& parts, qsizetype index) {
    if (index < 0 || index >= parts.size())
        throw RuntimeError(rt::SubscriptOutOfRange);
    return parts[index];
}

} // namespace tavik
