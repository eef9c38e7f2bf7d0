#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <optional>

namespace tavik {

class clsZELDB;

// The name of a file from its full path: the text after the last separator (the whole text
// when there is none). With `stripExtension` only the part before the name's first ".", so
// Ansage.teil2.wav gives Ansage.
QString PathFileName(const QString& path, bool stripExtension);

// The extension an imported file keeps: the text after the last "." of the source path, the
// whole path when it holds no ".".
QString ImportExtension(const QString& source);

// One entry of the import list: the file and its display name, the announcement's title.
struct ImportEntry {
    QString Source;
    QString Title;
};

struct ImportProgress {
    // Before each copy, with the source's file name.
    std::function<void(const QString& fileName)> beforeCopy;
    // After each file has been copied and counted.
    std::function<void()> afterEntry;
};

// The keys the "INDEX" list of `store` names at positions 1 to Count, whether or not their
// sound files exist: a new sound must not get one of them, or the list would name it twice.
QSet<QString> ListedKeys(clsZELDB& store);

// Imports the files into the package all or nothing, holding the package's write lock: each
// file is copied under a temporary name and appended to the "INDEX" list of `store` under the
// next key that no file, no entry of the list and none of `heldKeys` holds; then the store is
// saved to `indexFile` and the copies take their names. Returns the keys used, in list order.
// Any failure raises its runtime error and leaves the folder, the index file and `store` as
// they were. A `color` is stored as the highlight colour of every new key.
QStringList ImportSoundFiles(const QList<ImportEntry>& entries, const QString& packageFolder,
                             clsZELDB& store, const QString& indexFile,
                             const ImportProgress& progress = {},
                             const QSet<QString>& heldKeys = {},
                             std::optional<std::int32_t> color = std::nullopt);

} // namespace tavik
