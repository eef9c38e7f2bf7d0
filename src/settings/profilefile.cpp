#include "profilefile.h"

#include "profiletext.h"
#include "util/apppath.h"
#include "util/cp1252.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace tavik::profile {

namespace {

constexpr char kUtf16Bom[] = "\xFF\xFE";
const QString kLineEnd = QStringLiteral("\r\n");

bool hasUtf16Bom(const QByteArray& bytes) {
    return bytes.size() >= 2 && bytes.startsWith(QByteArrayView(kUtf16Bom, 2));
}

QString decodeUtf16Le(const QByteArray& bytes) {
    // The mark stays in the text so that a write puts it back; it sits before the first line
    // and is no blank, just as the system sees it.
    const qsizetype units = bytes.size() / 2;
    QString text(units, Qt::Uninitialized);
    const auto* src = reinterpret_cast<const uchar*>(bytes.constData());
    QChar* dst = text.data();
    for (qsizetype i = 0; i < units; ++i)
        dst[i] = QChar(qFromLittleEndian<quint16>(src + 2 * i));
    return text;
}

QByteArray encodeUtf16Le(const QString& text) {
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    auto* dst = reinterpret_cast<uchar*>(bytes.data());
    for (qsizetype i = 0; i < text.size(); ++i)
        qToLittleEndian<quint16>(text[i].unicode(), dst + 2 * i);
    return bytes;
}

// The mark is no part of the first line for the system: a header right after it counts.
QStringView linesOf(const ProfileText& profile) {
    QStringView text(profile.text);
    if (profile.utf16 && !text.isEmpty() && text.front() == QChar(0xFEFF))
        return text.mid(1);
    return text;
}

qsizetype linesOffset(const ProfileText& profile) {
    return QStringView(profile.text).size() - linesOf(profile).size();
}

bool endsWithLineEnd(QStringView text) {
    return text.isEmpty() || text.back() == u'\n' || text.back() == u'\r';
}

std::uint32_t saveProfile(const QString& path, const ProfileText& profile) {
    try {
        WriteFileAtomically(path, encodeProfileText(profile));
    } catch (const RuntimeError& e) {
        // The old file stays as it was; the caller learns why, as from the system's write.
        switch (e.number()) {
        case rt::PathNotFound:
            return error::PathNotFound;
        case rt::DiskFull:
            return error::DiskFull;
        default:
            return error::AccessDenied;
        }
    }
    return error::None;
}

} // namespace

std::optional<ProfileText> loadProfileText(const QString& path) {
    if (path.isEmpty())
        return std::nullopt;
    QFile file(path);
    if (!OpenToRead(file))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    ProfileText profile;
    profile.utf16 = hasUtf16Bom(bytes);
    profile.text = profile.utf16 ? decodeUtf16Le(bytes) : fromCp1252(bytes);
    return profile;
}

QByteArray encodeProfileText(const ProfileText& profile) {
    return profile.utf16 ? encodeUtf16Le(profile.text) : toCp1252(profile.text);
}

QString ansiText(const QString& text) {
    const QStringView cut = cutAtNul(text);
    return ThroughCp1252(cut.size() == text.size() ? text : cut.toString());
}

QString profilePath(const QString& file) {
    return NativePath(ansiText(file));
}

QString readProfileString(const QString& file, const QString& section, const QString& key,
                          const QString& defaultText, qsizetype bufferSize) {
    // A folder does not open as a file: it reads as missing.
    return readProfileStringIn(loadProfileText(profilePath(file)), section, key, defaultText,
                               bufferSize);
}

QString readProfileStringIn(const std::optional<ProfileText>& profile, const QString& section,
                            const QString& key, const QString& defaultText, qsizetype bufferSize) {
    if (bufferSize <= 0)
        return {};
    // The default loses its trailing spaces (tabs stay), as the system's reader does.
    QString result = ansiText(defaultText);
    while (result.endsWith(u' '))
        result.chop(1);
    const QString wantedSection = ansiText(section);
    const QString wantedKey = ansiText(key);
    // An empty section or key name finds nothing (the system returns the default).
    if (profile && !trimBlanks(wantedSection).isEmpty() && !trimBlanks(wantedKey).isEmpty()) {
        const KeyLocation loc = findKey(linesOf(*profile), wantedSection, wantedKey);
        if (loc.keyFound && loc.hasValue)
            result = ansiText(unquote(cutAtNul(loc.value)).toString());
    }
    result.truncate(bufferSize - 1);
    return result;
}

std::uint32_t writeProfileString(const QString& file, const QString& section, const QString& key,
                                 const std::optional<QString>& value) {
    const QString path = profilePath(file);
    if (path.isEmpty())
        return error::AccessDenied; // what the system answers for an empty file name
    if (path.contains(u'?') || path.contains(u'*'))
        return error::InvalidName; // also where a character had no ANSI form
    const QString sectionName = trimBlanks(ansiText(section)).toString();
    const QString keyName = trimBlanks(ansiText(key)).toString();
    // The system crashes on an empty section or key name; we refuse it instead.
    if (sectionName.isEmpty() || keyName.isEmpty())
        return error::InvalidParameter;

    const QFileInfo info(path);
    if (info.isDir())
        return error::AccessDenied;
    ProfileText profile;
    const bool exists = info.exists();
    if (exists) {
        std::optional<ProfileText> loaded = loadProfileText(path);
        if (!loaded)
            return error::AccessDenied;
        profile = std::move(*loaded);
    } else if (!QFileInfo(info.absolutePath()).isDir()) {
        return error::PathNotFound;
    }

    const qsizetype offset = linesOffset(profile);
    const KeyLocation loc = findKey(linesOf(profile), sectionName, keyName);
    QString& text = profile.text;
    if (!value) {
        // Deleting what is not there succeeds and changes nothing; a missing file is created
        // empty, as the system does.
        if (!loc.keyFound)
            return exists ? error::None : saveProfile(path, profile);
        text.remove(offset + loc.lineBegin, loc.lineNext - loc.lineBegin);
        return saveProfile(path, profile);
    }

    // The value goes on disk as given, blanks, quotes and all; only reads trim and unquote.
    const QString newValue = ansiText(*value);
    if (loc.keyFound) {
        // The line keeps its line end and the file's spelling of the key; blanks around the
        // old line and the "=" go, as the system writes the line afresh.
        const QString line = loc.keyName.toString() + u'=' + newValue;
        const qsizetype begin = offset + loc.lineBegin;
        const qsizetype length = loc.lineEnd - loc.lineBegin;
        if (QStringView(text).mid(begin, length) == line)
            return error::None;
        text.replace(begin, length, line);
    } else if (loc.sectionFound) {
        // A new key goes right after the section's last key, so comments and blank lines that
        // separate it from the next section stay where they are.
        const QString line = keyName + u'=' + newValue + kLineEnd;
        qsizetype at = offset + loc.insertAt;
        if (loc.insertAfterLineEnd) {
            // After the line end that follows: skip exactly one CR LF, CR or LF.
            if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n')
                at += 2;
            else
                ++at;
            text.insert(at, line);
        } else {
            text.insert(at, kLineEnd + line);
        }
    } else {
        // A new section goes at the very end, without a blank line before it; a last line
        // without a line end gets one first.
        if (!endsWithLineEnd(linesOf(profile)))
            text += kLineEnd;
        text += u'[' + sectionName + u']' + kLineEnd + keyName + u'=' + newValue + kLineEnd;
    }
    return saveProfile(path, profile);
}

} // namespace tavik::profile
