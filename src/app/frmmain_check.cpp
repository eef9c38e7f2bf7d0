#include "app/frmcheck.h"
#include "app/frmmain.h"

namespace tavik {

frmCheck* frmMain::checkWindow() const {
    return checkWindow_;
}

void frmMain::cmdCheck_Click() {
    // One findings window, checked afresh on every click.
    if (!checkWindow_)
        checkWindow_ = new frmCheck(*this);
    checkWindow_->Refresh();
    checkWindow_->show();
    checkWindow_->raise();
}

} // namespace tavik
