#include "settings/language.h"

#include "settings/modini.h"
#include "util/apppath.h"
#include "util/conversions.h"
#include "util/vbstrings.h"

namespace tavik {

QString ReadLanguageValue(const QString& file, const QString& section, const QString& key) {
    // No language chosen yet: there is no file to ask.
    if (file.isEmpty())
        return QString();
    return CStr(ReadINI(file, section, key, Variant::fromString(QString())));
}

QString Language::GetLangString(std::int32_t number, const QString& a1, const QString& a2,
                                const QString& a3, const QString& a4, const QString& a5) const {
    QString v = ReadLanguageValue(LanguageFile, QStringLiteral("_String"), QString::number(number));
    v.replace(QStringLiteral("&_"), QStringLiteral("\r\n"), Qt::CaseSensitive);
    // One argument after the other over the whole text: what an earlier one brought in is
    // replaced by the later ones.
    const QString* args[] = {&a1, &a2, &a3, &a4, &a5};
    for (int i = 0; i < 5; ++i)
        v.replace(QLatin1Char('%') + QString::number(i + 1), *args[i], Qt::CaseSensitive);
    return v;
}

QString Language::GetLangFile(std::int16_t number) const {
    const QString v =
        ReadLanguageValue(LanguageFile, QStringLiteral("_Files"), QString::number(number));
    if (v.isEmpty())
        return QString();
    return NativePath(AppPath() + QStringLiteral("\\..\\") + v);
}

QString LanguageFolder() {
    return NativePath(AppPath() + QStringLiteral("\\..\\res\\lang\\"));
}

ControlText ParseControlText(const QString& value) {
    ControlText t;
    if (!value.contains(QLatin1Char('|'))) {
        t.caption = value;
        return t;
    }
    const QStringList parts = Split(value, QStringLiteral("|"));
    t.caption = PartAt(parts, 0);
    t.toolTip = PartAt(parts, 1);
    t.hasToolTip = true;
    return t;
}

} // namespace tavik
