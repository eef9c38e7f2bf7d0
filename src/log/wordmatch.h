#pragma once

#include <QList>
#include <QString>

namespace tavik {

struct WordMatch {
    qsizetype start = 0;
    qsizetype length = 0;
    bool operator==(const WordMatch&) const = default;
};

// Every whole-word, case-sensitive occurrence of `word` in `text` ("\b" word "\b"), in text
// order. A word that is blank after trimming matches nothing.
QList<WordMatch> FindWholeWords(const QString& text, const QString& word);

} // namespace tavik
