#include "dialogs/packagecommands.h"

#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "dialogs/frmfile.h"
#include "dialogs/importformats.h"
#include "dialogs/sounddrop.h"
#include "util/apppath.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

namespace tavik {

void ShowImportDialog(frmMain& main, const QStringList& files) {
    frmFile dialog(main);
    dialog.AddFiles(files);
    main.FadeInEffect(main.cmdAdd(), &dialog, 20);
    dialog.exec();
}

void InstallPackageListDrop(frmMain& main) {
    frmMain* window = &main;
    auto* drop = new SoundDrop(
        main.lsvPack(), InstalledFormats(AppPath() + QStringLiteral("\\Formats.ini")),
        [window] { return !window->IndexFilePath.isEmpty() && window->cmdAdd()->isEnabled(); });
    // Queued: the dialog's own event loop must not run inside the drop, which the file
    // manager waits for.
    QObject::connect(
        drop, &SoundDrop::filesDropped, window,
        [window](const QStringList& files) {
            RunHandler([window, files] { window->ImportSounds(files); });
        },
        Qt::QueuedConnection);
}

} // namespace tavik
