#pragma once

#include <QString>
#include <functional>

namespace tavik {

class clsZELDB;

// Writes `text` and a line break (CR LF) in ANSI as the whole new content of `path`,
// replacing an older file. Raises the runtime's file error when it cannot.
void SaveTextToFile(const QString& text, const QString& path);

// Makes the folder `path`. On any error (it exists already, its parent is missing, no rights)
// calls `complain` and reports false.
bool CreateDir(const QString& path, const std::function<void()>& complain);

// The last part of a package folder split at its separators: "" for an empty folder and for
// one that ends in a separator.
QString GetFolderName(const QString& packageFolder);

// Whether a typed folder name stays one folder below the data folder: no separator, no
// "..", and no drive colon, which would take the path elsewhere on Windows; and names the same
// folder there (no device name such as "CON", no trailing dot or blank).
bool IsPlainFolderName(const QString& name);

// The package folder a new package gets for a typed folder name: the data folder followed by
// the name.
QString NewPackageFolder(const QString& folderName);
QString NewPackageFolder(const QString& folderName, const QString& dataFolder);

// Why a new package cannot be made, in the order the dialog's OK asks.
enum class NewPackageRefusal {
    None,
    FolderName,    // the name leads out of the data folder (language text 21)
    PackageThere,  // the folder holds a non-empty Package.io (language text 20)
    FolderNotMade, // the folder cannot be made (language text 21)
};

// Checks the typed folder name and `folder` (an empty Package.io there is deleted) and makes
// the folder. Nothing is made on a refusal.
NewPackageRefusal MakeNewPackageFolder(const QString& folderName, const QString& folder);

// What the package dialog's OK writes.
struct PackageInfo {
    QString Title;
    QString Author;
    QString Description; // as it goes to the file (DescriptionForFile)
    QString Picture;     // path of a picture to copy, or ""
};

// Stores the name and author in `store` and saves it once to `indexFile`; writes Package.txt
// when the description is not empty, and copies the picture to Package.img when it exists
// with at least one byte. An empty description or picture leaves an older file untouched.
// Raises the runtime's file error when a write fails.
void WritePackageInfo(clsZELDB& store, const QString& indexFile, const QString& folder,
                      const PackageInfo& info);

// How much of a description file the information mode reads: a multi-line box holds no more.
inline constexpr qint64 kMaxDescriptionBytes = 64 * 1024;

// The description a package folder's Package.txt holds, as a text box shows it: line breaks
// as "\n", the text up to its first NUL byte (where an edit control ends it), at most
// kMaxDescriptionBytes read. A missing or unreadable file gives "".
QString ReadDescription(const QString& path);

// Whether confirming writes the description file: a new package's description when it is not
// empty; in the information mode only one that was edited since the box was filled, so an
// unedited file stays byte for byte, however long it is and whatever bytes it holds.
bool WritesDescription(bool newPackage, const QString& boxText, const QString& shownAtLoad);

// A text box's text as it goes to a text file: every line break as CR LF.
QString DescriptionForFile(const QString& boxText);

} // namespace tavik
