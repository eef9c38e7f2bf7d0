#include "cp1252guard.h"

#include "cp1252.h"

#include <QStringList>
#include <QStringView>
#include <array>
#include <utility>

namespace tavik {

namespace {

// Letters whose decomposition keeps no base letter, and signs with a plain spelling.
constexpr std::array<std::pair<char32_t, const char*>, 28> kClosest = {{
    {U'Ł', "L"},  {U'ł', "l"},  {U'Đ', "D"},  {U'đ', "d"},  {U'Ħ', "H"},  {U'ħ', "h"},
    {U'ı', "i"},  {U'Ŧ', "T"},  {U'ŧ', "t"},  {U'Ŀ', "L"},  {U'ŀ', "l"},  {U'ĸ', "k"},
    {U'Ŋ', "N"},  {U'ŋ', "n"},  {U'ſ', "s"},  {U'→', "->"}, {U'←', "<-"}, {U'↔', "<->"},
    {U'⇒', "=>"}, {U'⇐', "<="}, {U'≤', "<="}, {U'≥', ">="}, {U'≠', "!="}, {U'−', "-"},
    {U'‐', "-"},  {U'‑', "-"},  {U'≈', "~"},  {U'∙', "·"},
}};

QString closestOne(char32_t c, const QString& character) {
    for (const auto& [from, to] : kClosest) {
        if (from == c)
            return QString::fromUtf8(to);
    }
    // A compatibility decomposition without its combining marks: "Ș" is "S" and a comma below,
    // "ﬁ" is "fi", a full-width "Ａ" is "A".
    QString closest;
    const QString decomposed = character.normalized(QString::NormalizationForm_KD);
    for (const char32_t part : decomposed.toUcs4()) {
        if (QChar::category(part) == QChar::Mark_NonSpacing ||
            QChar::category(part) == QChar::Mark_SpacingCombining ||
            QChar::category(part) == QChar::Mark_Enclosing)
            continue;
        if (!Cp1252HoldsCharacter(part))
            return QStringLiteral("?");
        closest += QString::fromUcs4(&part, 1);
    }
    // A character of marks alone has nothing left to write.
    return closest;
}

// Calls `each(position, codePoint, character)` for every character of `text`.
template <typename Each> void forEachCharacter(const QString& text, Each each) {
    qsizetype position = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        ++position;
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            each(position, QChar::surrogateToUcs4(c, text[i + 1]), text.mid(i, 2));
            ++i;
        } else {
            each(position, char32_t(c.unicode()), QString(c));
        }
    }
}

} // namespace

QList<UnheldCharacter> FindUnheldCharacters(const QString& text) {
    QList<UnheldCharacter> unheld;
    if (CanHoldInCp1252(text))
        return unheld;
    forEachCharacter(text, [&](qsizetype position, char32_t c, const QString& character) {
        if (!Cp1252HoldsCharacter(c))
            unheld.append({position, c, character});
    });
    return unheld;
}

QString ClosestCp1252Text(const QString& text) {
    if (CanHoldInCp1252(text))
        return text;
    QString closest;
    forEachCharacter(text, [&](qsizetype, char32_t c, const QString& character) {
        closest += Cp1252HoldsCharacter(c) ? character : closestOne(c, character);
    });
    return closest;
}

QString UnheldCharacterName(const UnheldCharacter& unheld) {
    const QString number =
        QStringLiteral("U+%1").arg(uint(unheld.codePoint), 4, 16, QLatin1Char('0')).toUpper();
    // A lone surrogate or a control character would not show; its number says enough.
    if (!QChar::isPrint(unheld.codePoint))
        return number;
    return QStringLiteral("%1 \"%2\"").arg(number, unheld.character);
}

QString UnheldCharactersProblem(const QString& text) {
    const QList<UnheldCharacter> unheld = FindUnheldCharacters(text);
    if (unheld.isEmpty())
        return {};
    QStringList named;
    for (const UnheldCharacter& u : unheld)
        named << QStringLiteral("%1 at character %2").arg(UnheldCharacterName(u)).arg(u.position);
    return QStringLiteral("code page 1252 cannot hold %1 (--lossy writes \"?\" instead)")
        .arg(named.join(QStringLiteral(", ")));
}

} // namespace tavik
