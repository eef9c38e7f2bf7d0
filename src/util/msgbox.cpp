#include "util/msgbox.h"

#include <QApplication>
#include <QMessageBox>

namespace tavik {

namespace {

MessageHandler& handler() {
    static MessageHandler current;
    return current;
}

QMessageBox::Icon toQt(MsgIcon icon) {
    switch (icon) {
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton toQt(MsgResult button) {
    switch (button) {
    case MsgResult::OK:
        return QMessageBox::Ok;
    case MsgResult::Cancel:
        return QMessageBox::Cancel;
    case MsgResult::Yes:
        return QMessageBox::Yes;
    case MsgResult::No:
        return QMessageBox::No;
    case MsgResult::Save:
        return QMessageBox::Save;
    case MsgResult::Discard:
        return QMessageBox::Discard;
    }
    return QMessageBox::NoButton;
}

} // namespace

MsgResult MsgBox(QWidget* parent, const QString& text, MsgButtons buttons, MsgIcon icon,
                 const QString& title, std::optional<MsgResult> defaultButton) {
    MessageRequest request{
        parent, text,    title.isEmpty() ? QApplication::applicationName() : title,
        icon,   buttons, defaultButton};
    if (handler())
        return handler()(request);

    QMessageBox box(toQt(icon), request.title, text, QMessageBox::NoButton, parent);
    switch (buttons) {
    case MsgButtons::OK:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case MsgButtons::OKCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        break;
    case MsgButtons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        break;
    case MsgButtons::SaveDiscardCancel:
        box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
        break;
    }
    if (defaultButton)
        box.setDefaultButton(toQt(*defaultButton));
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MsgResult::Yes;
    case QMessageBox::No:
        return MsgResult::No;
    case QMessageBox::Cancel:
        return MsgResult::Cancel;
    case QMessageBox::Save:
        return MsgResult::Save;
    case QMessageBox::Discard:
        return MsgResult::Discard;
    default:
        // Escape or the window's close button: the answer that changes nothing.
        switch (buttons) {
        case MsgButtons::YesNo:
            return MsgResult::No;
        case MsgButtons::OKCancel:
        case MsgButtons::SaveDiscardCancel:
            return MsgResult::Cancel;
        case MsgButtons::OK:
            break;
        }
        return MsgResult::OK;
    }
}

MessageHandler SetMessageHandler(MessageHandler replacement) {
    MessageHandler previous = std::move(handler());
    handler() = std::move(replacement);
    return previous;
}

} // namespace tavik
