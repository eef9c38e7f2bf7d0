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

} // namespace

MsgResult MsgBox(QWidget* parent, const QString& text, MsgButtons buttons, MsgIcon icon,
                 const QString& title) {
    MessageRequest request{parent, text, title.isEmpty() ? QApplication::applicationName() : title,
                           icon, buttons};
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
    }
    switch (box.exec()) {
    case QMessageBox::Yes:
        return MsgResult::Yes;
    case QMessageBox::No:
        return MsgResult::No;
    case QMessageBox::Cancel:
        return MsgResult::Cancel;
    default:
        return buttons == MsgButtons::YesNo ? MsgResult::No : MsgResult::OK;
    }
}

MessageHandler SetMessageHandler(MessageHandler replacement) {
    MessageHandler previous = std::move(handler());
    handler() = std::move(replacement);
    return previous;
}

} // namespace tavik
