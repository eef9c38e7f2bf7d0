#include "newpackage.h"

#include "package/clszeldb.h"
#include "package/packagefolder.h"
#include "util/apppath.h"
#include "util/cp1252.h"
#include "util/filenamerules.h"
#include "util/fileops.h"
#include "util/runtimeerror.h"

#include <QFile>

namespace tavik {

void SaveTextToFile(const QString& text, const QString& path) {
    WriteFileAtomically(path, toCp1252(text) + QByteArrayLiteral("\r\n"));
}

bool CreateDir(const QString& path, const std::function<void()>& complain) {
    try {
        MkDir(path);
        return true;
    } catch (const RuntimeError&) {
        if (complain)
            complain();
        return false;
    }
}

QString GetFolderName(const QString& packageFolder) {
    const qsizetype cut =
        std::max(packageFolder.lastIndexOf(u'\\'), packageFolder.lastIndexOf(u'/'));
    return packageFolder.mid(cut + 1);
}

bool IsPlainFolderName(const QString& name) {
    // Packages go to Windows: a name it takes for a device or stores under another name would
    // make another folder there, or none.
    return !name.contains(u'/') && !name.contains(u'\\') && !name.contains(u"..") &&
           !name.contains(u':') && IsPortableName(name);
}

QString NewPackageFolder(const QString& folderName) {
    return DataFolder() + folderName;
}

QString NewPackageFolder(const QString& folderName, const QString& dataFolder) {
    return NativePath(dataFolder + QStringLiteral("\\")) + folderName;
}

NewPackageRefusal MakeNewPackageFolder(const QString& folderName, const QString& folder) {
    // A typed name never leads out of the data folder, not even to look for a package there.
    if (!IsPlainFolderName(folderName))
        return NewPackageRefusal::FolderName;
    if (FileCheck(NativePath(folder + QString::fromUtf16(kIndexFileName)), true))
        return NewPackageRefusal::PackageThere;
    if (!CreateDir(folder, {}))
        return NewPackageRefusal::FolderNotMade;
    return NewPackageRefusal::None;
}

void WritePackageInfo(clsZELDB& store, const QString& indexFile, const QString& folder,
                      const PackageInfo& info) {
    store.SaveSetting(QString::fromUtf16(pkg::Info), QString::fromUtf16(pkg::Name),
                      Variant::fromString(info.Title));
    store.SaveSetting(QString::fromUtf16(pkg::Info), QString::fromUtf16(pkg::Author),
                      Variant::fromString(info.Author));
    store.SaveIOFile(indexFile);
    if (!info.Description.isEmpty())
        SaveTextToFile(info.Description, NativePath(folder + QString::fromUtf16(kCommentFileName)));
    if (!info.Picture.isEmpty() && FileCheck(info.Picture))
        FileCopy(info.Picture, NativePath(folder + QString::fromUtf16(kPictureFileName)));
}

QString ReadDescription(const QString& path) {
    QFile file(path);
    if (path.isEmpty() || !OpenToRead(file))
        return {};
    QByteArray bytes = file.read(kMaxDescriptionBytes);
    const qsizetype nul = bytes.indexOf('\0');
    if (nul >= 0)
        bytes.truncate(nul);
    QString text = fromCp1252(bytes);
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\r', u'\n');
    return text;
}

bool WritesDescription(bool newPackage, const QString& boxText, const QString& shownAtLoad) {
    if (boxText.isEmpty())
        return false;
    return newPackage || boxText != shownAtLoad;
}

QString DescriptionForFile(const QString& boxText) {
    QString text = boxText;
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    text.replace(u'\n', QStringLiteral("\r\n"));
    return text;
}

} // namespace tavik
