#include "modini.h"

#include "profilefile.h"
#include "util/conversions.h"

#include <limits>

namespace tavik {

namespace {

// The fixed buffer the value is read into; its last character is the terminating NUL.
constexpr qsizetype kBufferLength = 1024;

} // namespace

Variant ReadINI(const QString& file, const QString& section, const QString& key,
                const Variant& defaultValue) {
    const QString defaultText = CStr(defaultValue);
    return Variant::fromString(
        profile::readProfileString(file, section, key, defaultText, kBufferLength));
}

bool ReadINIIsWhole(const QString& file, const QString& section, const QString& key) {
    const QString whole =
        profile::readProfileString(file, section, key, QString(), std::numeric_limits<int>::max());
    return whole.size() <= kBufferLength - 1;
}

void WriteINI(const QString& file, const QString& section, const QString& key,
              const QString& value) {
    // A failed write goes unnoticed by design.
    (void)profile::writeProfileString(file, section, key, value);
}

std::int32_t DeleteINI(const QString& file, const QString& section, const QString& key,
                       const MessageReporter& report) {
    // The NULs end each text for the system, so they change nothing here; they are kept
    // because that is how the call is made.
    const QString sectionArg = StripBrackets(section) + QChar(u'\0');
    const QString keyArg = key.isEmpty() ? key : key + QChar(u'\0');
    const QString fileArg = file + QChar(u'\0');
    const std::uint32_t failure =
        profile::writeProfileString(fileArg, sectionArg, keyArg, std::nullopt);
    if (failure == profile::error::None)
        return 1;
    if (report)
        report(QStringLiteral("Error code is :") + QString::number(failure));
    return 0;
}

QString StripBrackets(const QString& section) {
    QString result = section.startsWith(u'[') ? section.mid(1) : section;
    if (section.endsWith(u']') && !result.isEmpty())
        result.chop(1);
    return result;
}

} // namespace tavik
