#include "wordmatch.h"

#include <QRegularExpression>

namespace tavik {

QList<WordMatch> FindWholeWords(const QString& text, const QString& word) {
    QList<WordMatch> found;
    if (word.trimmed().isEmpty())
        return found;
    const QString pattern = QStringLiteral("\\b") + word + QStringLiteral("\\b");
    const QRegularExpression re(pattern);
    if (!re.isValid())
        return found;
    QRegularExpressionMatchIterator it = re.globalMatch(text);
    while (it.hasNext()) {
        const QRegularExpressionMatch m = it.next();
        if (m.capturedLength() > 0)
            found.append({m.capturedStart(), pattern.size() - 4});
    }
    return found;
}

} // namespace tavik
