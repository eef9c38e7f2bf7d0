#include "formatsfile.h"

#include "util/apppath.h"

namespace tavik {

namespace {

// The buffer every profile value is read into.
constexpr qsizetype kValueBuffer = 1024;

} // namespace

FormatsFile::FormatsFile() : FormatsFile(NativePath(AppPath() + QStringLiteral("\\Formats.ini"))) {}

FormatsFile::FormatsFile(const QString& file)
    : text_(profile::loadProfileText(profile::profilePath(file))) {}

QString FormatsFile::IndentifyFormat(const QString& key) {
    const auto known = answers_.constFind(key);
    if (known != answers_.constEnd())
        return *known;
    const QString type =
        profile::readProfileStringIn(text_, key, QStringLiteral("Format"), QString(), kValueBuffer);
    answers_.insert(key, type);
    return type;
}

} // namespace tavik
