#include "app/readme.h"

#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/fileops.h"
#include "util/msgbox.h"

#include <QDesktopServices>
#include <QDir>
#include <QUrl>

namespace tavik {

void OpenReadme(QWidget* parent, const Language& language) {
    const QString path = language.GetLangFile(LangFile::Readme);
    if (path.isEmpty() || !FileCheck(path)) {
        // Nothing to show would otherwise look like a command that does nothing.
        const QString named = path.isEmpty() ? QStringLiteral("readme")
                                             : QDir::toNativeSeparators(QDir::cleanPath(path));
        MsgBox(parent, language.GetLangString(LangText::ReadmeMissing, named), MsgButtons::OK,
               MsgIcon::Exclamation);
        return;
    }
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

} // namespace tavik
