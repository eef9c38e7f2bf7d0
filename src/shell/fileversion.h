#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>

namespace tavik {

// What the about window reports of a file.
struct FileVersionInfo {
    QString FileName; // the text after the last "\" (or "/") of the path
    QString FileType;
    QString Version; // four parts, most significant first: "6.0.84.18"
    QString Path;
};

// The fixed part of a version resource: 13 little-endian 32-bit fields, all zero when the file
// has none.
struct FixedFileInfo {
    std::array<std::uint32_t, 13> fields{};
    std::uint32_t fileVersionMS() const { return fields[2]; }
    std::uint32_t fileVersionLS() const { return fields[3]; }
    std::uint32_t fileType() const { return fields[9]; }
};

// Finds the fixed version information in a file's bytes: the block that follows the
// "VS_VERSION_INFO" key (16-bit or ANSI) and starts with the signature FEEF04BD. This is what
// the system's version calls read, so it works on every platform.
FixedFileInfo findFixedFileInfo(const QByteArray& bytes);

// The fixed version information of the file at `path`: the system's version call on Windows, the
// file's own bytes elsewhere; all zero when the file has none or cannot be read.
FixedFileInfo ReadFixedFileInfo(const QString& path);

// The name of a file type as the about window shows it.
QString FileTypeName(std::uint32_t fileType);

FileVersionInfo ReadFileVersion(const QString& path);

} // namespace tavik
