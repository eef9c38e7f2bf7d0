#pragma once

// DriveRoots, which the drive list offers, is one of the platform's names.
#include "util/platformnames.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace tavik {

// The drive (or volume root) a folder lies on, one of DriveRoots() when it is listed there.
QString DriveOf(const QString& folder);

// The subfolders of `folder`, sorted by name without regard to case; hidden ones left out.
QStringList ListFolders(const QString& folder);

// The plain files of `folder` that match `pattern`: one or more wildcard patterns joined by
// ";", where "*.*" matches every name, as the directory search has it. An empty pattern
// matches nothing. Sorted by name without regard to case; hidden files left out.
QStringList ListPatternFiles(const QString& folder, const QString& pattern);

// `folder` and `name` joined by one separator, none added when the folder already ends in one.
QString JoinFolderFile(const QString& folder, const QString& name);

// Where a file dialog starts. Dialogs about packages (the search for an index file) start in
// the data folder; the import of sounds and the package picture in the package's folder when
// it exists (a package still to be made has none yet), else in the data folder.
QString PackagesDialogFolder();
QString PackageDialogFolder(const QString& packageFolder);

// The picture dialog's filter, "description|patterns|..." as the file dialog takes it: first
// every picture format the image reader knows (`formats`, such as "png" or "jpeg") as one
// entry named `allPictures`, then the `designed` entries. Just `designed` without formats.
QString PictureFilter(const QString& allPictures, const QString& designed,
                      const QList<QByteArray>& formats);

} // namespace tavik
