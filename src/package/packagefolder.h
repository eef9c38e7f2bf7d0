#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <cstdint>

namespace tavik {

// The fixed files of a package folder, appended to the folder's path.
inline constexpr char16_t kIndexFileName[] = u"\\Package.io";
inline constexpr char16_t kCommentFileName[] = u"\\Package.txt";
inline constexpr char16_t kPictureFileName[] = u"\\Package.img";
// How the file chooser that searches for packages offers index files.
inline constexpr char16_t kIndexFileFilter[] = u"Tavik Indexdatei [*.io]|*.io";

// The folder that holds every package: the program folder followed by "\..\Data\".
QString DataFolder();

// A number as an announcement key: at least four digits, zero-padded on the left.
QString FormatKey(std::int32_t number);

// Whether a key read from a package can name a sound file: one or more of the digits 0-9.
// Anything else (an empty key, a path, a wildcard, a fixed file's name) names no file.
bool IsAnnouncementKey(const QString& key);

// The lowest key, counting from 0, that names no file and no link in the package folder and
// is none of `alsoTaken` (keys a list still holds whose sound may be gone).
QString NextFreeKey(const QString& packageFolder, const QSet<QString>& alsoTaken = {});

// The full path of the first file in the package folder whose name begins with `key`, or
// "" when there is none. A key that is not a number finds nothing, and a name that goes on
// with another digit belongs to a longer key: nothing read from a package may lead outside
// its folder or to another announcement's sound.
QString GetFileName(const QString& packageFolder, const QString& key);

// A package folder's file names, listed once, so that finding the files of many keys costs
// one listing instead of one per key. GetFileName answers as the free function does for the
// folder as it was listed.
class PackageFileList {
public:
    explicit PackageFileList(QString packageFolder);
    QString GetFileName(const QString& key) const;
    // The folder's files as ListFiles gives them.
    const QStringList& Names() const { return names_; }

private:
    QString folder_;
    QString prefix_;    // the folder and a separator, as a path is put together
    QStringList names_; // in the order a directory search returns them
};

// The last "."-separated part of a name; the whole name when it holds no ".".
QString GetExtension(const QString& name);

// One "INDEX" entry: key "~" title.
struct IndexEntry {
    QString Key;
    QString Title;
};
// Splits an entry at "~": the key is the text before the first "~", the title the text
// between the first and the second. An entry without "~" (or an empty one) has no title
// part and raises runtime error 9.
IndexEntry SplitIndexEntry(const QString& entry);
QString JoinIndexEntry(const QString& key, const QString& title);

// Keys and items of the package settings, with the defaults passed as text.
namespace pkg {
inline constexpr char16_t Info[] = u"INFO";
inline constexpr char16_t Name[] = u"Name";
inline constexpr char16_t Author[] = u"Autor";
inline constexpr char16_t Index[] = u"INDEX";
inline constexpr char16_t Count[] = u"Count";
inline constexpr char16_t Color[] = u"Color";
inline constexpr char16_t NameVisible[] = u"NameVisible";
inline constexpr char16_t AutoPlace[] = u"AutoPlace";

inline constexpr char16_t DefaultText[] = u"";
inline constexpr char16_t DefaultCount[] = u"0";
inline constexpr char16_t DefaultColor[] = u"0";
inline constexpr char16_t DefaultNameVisible[] = u"1";
inline constexpr char16_t DefaultAutoPlace[] = u"-1";
} // namespace pkg

} // namespace tavik
