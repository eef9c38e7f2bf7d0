#include "app/frmmain.h"

#include "util/placement.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QGridLayout>
#include <QScreen>
#include <algorithm>

// The extended panel beside the list. It never lies over the list: the window grows by the
// panel's room where the screen allows, and the list gives way where it does not.

namespace tavik {

namespace {

// How narrow the list may get beside the panel; it scrolls sideways then.
constexpr int kListGivingWay = 160;

} // namespace

void frmMain::cmdExpand_Click() {
    cmdExpand_->setEnabled(false);
    makeRoomForPanel();
    FadeInEffect(cmdExpand_, picExpand_, 20);
    picExpand_->show();
    // The panel's package commands work only when a package is open.
    EnableServicButtons(cmdSave_->isEnabled());
}

void frmMain::cmdUnexpand_Click() {
    picExpand_->hide();
    // First, so that the trail ends where the button is once the window has its width back.
    giveBackPanelRoom();
    FadeInEffect(picExpand_, cmdExpand_, 20);
    cmdExpand_->setEnabled(true);
    EnableServicButtons(true);
}

void frmMain::makeRoomForPanel() {
    frameBeforePanel_ = QRect();
    const auto* grid = qobject_cast<QGridLayout*>(centralWidget()->layout());
    const int spacing = grid ? std::max(0, grid->horizontalSpacing()) : 0;
    const int room = picExpand_->sizeHint().width() + spacing;
    const int grow = std::max(0, kListWidth + room - lsvPack_->width());
    // From here on the layout shrinks the list rather than laying the panel over it.
    lsvPack_->setMinimumWidth(kListGivingWay);

    // A maximised window keeps its size; the list gives way there.
    const bool maximised = windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen);
    if (grow > 0 && !maximised) {
        const QRect frame = frameGeometry();
        QRect wanted(frame.topLeft(), QSize(frame.width() + grow, frame.height()));
        if (const QScreen* own = screen()) {
            const QRect area = own->availableGeometry();
            wanted.setWidth(std::min(wanted.width(), std::max(frame.width(), area.width())));
            wanted = KeepInside(wanted, area);
        }
        if (wanted != frame) {
            frameBeforePanel_ = frame;
            sizeBeforePanel_ = size();
            resize(width() + wanted.width() - frame.width(), height());
            move(wanted.topLeft());
            sizeWithPanel_ = size();
        }
    }
    // Lays the panel out where it will appear, so the zoom trail ends there; nothing is
    // painted before it is hidden again.
    picExpand_->show();
    centralWidget()->layout()->activate();
    picExpand_->hide();
}

void frmMain::giveBackPanelRoom() {
    lsvPack_->setMinimumWidth(kListWidth);
    if (frameBeforePanel_.isValid() && size() == sizeWithPanel_) {
        resize(sizeBeforePanel_);
        move(frameBeforePanel_.topLeft());
    }
    frameBeforePanel_ = QRect();
    centralWidget()->layout()->activate();
}

} // namespace tavik
