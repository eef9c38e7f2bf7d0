#pragma once

#include <QStringList>

namespace tavik {

class frmMain;

// Shows the import dialog modally for the open package, after the zoom effect from the main
// window's add button, with `files` already in its import list.
void ShowImportDialog(frmMain& main, const QStringList& files = {});

// Lets sound files dropped onto the main window's package list open the import dialog with
// them, while a package is open.
void InstallPackageListDrop(frmMain& main);

} // namespace tavik
