#include "util/savequestion.h"

#include "util/msgbox.h"

namespace tavik {

bool SaveOrDiscard(QWidget* parent, const QString& text, const QString& title,
                   const std::function<bool()>& save) {
    switch (MsgBox(parent, text, MsgButtons::SaveDiscardCancel, MsgIcon::Question, title)) {
    case MsgResult::Save:
        return save();
    case MsgResult::Discard:
        return true;
    default:
        return false;
    }
}

} // namespace tavik
