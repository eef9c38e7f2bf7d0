#pragma once

#include <QList>
#include <QString>

namespace tavik {

// A character of a text that code page 1252 cannot hold: writing the text would turn it into
// "?". Positions count characters from 1, so an emoji (a surrogate pair) is one character.
struct UnheldCharacter {
    qsizetype position = 0;
    char32_t codePoint = 0;
    QString character;

    bool operator==(const UnheldCharacter&) const = default;
};

// Every character of `text` the code page cannot hold, in text order.
QList<UnheldCharacter> FindUnheldCharacters(const QString& text);

// `text` with each character the code page cannot hold replaced by the closest it can: a
// letter without its accents ("Ș" to "S"), a letter that has no decomposition by its base
// ("Ł" to "L"), a few signs by their ASCII spelling ("→" to "->"), anything else by "?".
QString ClosestCp1252Text(const QString& text);

// "U+2192 "→"": the character's number and the character, as messages name it.
QString UnheldCharacterName(const UnheldCharacter& unheld);

// For the headless tool: what in `text` the code page cannot hold, naming each character and
// its position; empty when it holds every character.
QString UnheldCharactersProblem(const QString& text);

} // namespace tavik
