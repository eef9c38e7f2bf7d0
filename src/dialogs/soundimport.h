#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

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

// Copies each file into the package folder under the next free key and appends it to the
// "INDEX" list of `store` (in memory only; the caller saves the store once at the end).
// Returns the keys used, in list order. A copy that fails raises its runtime error and ends
// the run: the files before it stay copied and counted, the failed one leaves nothing.
QStringList ImportSoundFiles(const QList<ImportEntry>& entries, const QString& packageFolder,
                             clsZELDB& store, const ImportProgress& progress = {});

} // namespace tavik
