#include "util/searchfold.h"

namespace tavik {

QString FoldForSearch(const QString& text) {
    // Plain ASCII, by far the common case, needs neither decomposition nor a second string.
    bool ascii = true;
    for (const QChar c : text) {
        if (c.unicode() >= 0x80) {
            ascii = false;
            break;
        }
    }
    if (ascii)
        return text.toLower();
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString folded;
    folded.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        const QChar::Category category = c.category();
        if (category == QChar::Mark_NonSpacing || category == QChar::Mark_SpacingCombining ||
            category == QChar::Mark_Enclosing)
            continue;
        folded.append(c);
    }
    return folded.toCaseFolded();
}

} // namespace tavik
