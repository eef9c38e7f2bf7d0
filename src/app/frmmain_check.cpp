#include "app/frmcheck.h"
#include "app/frmmain.h"
#include "util/windowplacement.h"

namespace tavik {

frmCheck* frmMain::checkWindow() const {
    return checkWindow_;
}

void frmMain::cmdCheck_Click() {
    // One findings window, checked afresh on every click.
    const bool first = checkWindow_ == nullptr;
    if (first)
        checkWindow_ = new frmCheck(*this);
    checkWindow_->Refresh();
    // It opens centred on the main window and wholly on its screen; later it stays where the
    // user put it.
    if (first)
        PlaceOnOwner(checkWindow_, this);
    checkWindow_->show();
    checkWindow_->raise();
}

} // namespace tavik
