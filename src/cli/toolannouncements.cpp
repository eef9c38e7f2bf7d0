#include "tool.h"

#include "audio/mcipackagesounds.h"

#include <QFileInfo>

namespace tavik::cli {

void loadToolAnnouncements(clsZELDB& store, const QString& indexPath, modMCI& mci,
                           AnnouncementTable& table, QTextStream& err) {
    AnnouncementLoadHooks hooks;
    hooks.missingFile = [&](const QString& key, const QString& title) {
        err << "tavik: " << indexPath << ": no sound file for " << key << " '" << title << "'\n";
    };
    LoadAnnouncementTable(store, QFileInfo(indexPath).absolutePath(), mci, table, hooks);
}

} // namespace tavik::cli
