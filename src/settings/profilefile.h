#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace tavik::profile {

// The system's error codes a profile write can end with.
namespace error {
inline constexpr std::uint32_t None = 0;
inline constexpr std::uint32_t FileNotFound = 2;
inline constexpr std::uint32_t PathNotFound = 3;
inline constexpr std::uint32_t AccessDenied = 5;
inline constexpr std::uint32_t InvalidParameter = 87;
inline constexpr std::uint32_t DiskFull = 112;
inline constexpr std::uint32_t InvalidName = 123;
} // namespace error

// A profile file's text. Files are ANSI (code page 1252) unless they start with a UTF-16LE
// byte order mark, which the system keeps as it finds it; a UTF-8 mark means nothing to it
// and is read as three ANSI characters of the first line.
struct ProfileText {
    QString text;
    bool utf16 = false;
};

// The file's text, or nothing when it is missing or cannot be read.
std::optional<ProfileText> loadProfileText(const QString& path);
QByteArray encodeProfileText(const ProfileText& profile);

// The texts as they cross the ANSI interface: cut at the first NUL, then through code page
// 1252 and back (a character it cannot hold becomes "?").
QString ansiText(const QString& text);

// A file name as the program builds it ("\" separators) turned into one this system opens.
QString profilePath(const QString& file);

// GetPrivateProfileStringA with a buffer of `bufferSize` characters: the value of `key` in
// `section`, or `defaultText` (trailing spaces dropped) when file, section, key or its "="
// is missing; cut to bufferSize - 1 characters.
QString readProfileString(const QString& file, const QString& section, const QString& key,
                          const QString& defaultText, qsizetype bufferSize);

// WritePrivateProfileStringA: stores `value` under `key`, or deletes the key's line when
// `value` is empty (no value, not an empty text). Returns error::None or the system's error
// code for the failure.
// readProfileString over a file's text read earlier (nothing: the file was missing), for a
// caller that asks one file many questions.
QString readProfileStringIn(const std::optional<ProfileText>& profile, const QString& section,
                            const QString& key, const QString& defaultText, qsizetype bufferSize);

std::uint32_t writeProfileString(const QString& file, const QString& section, const QString& key,
                                 const std::optional<QString>& value);

} // namespace tavik::profile
