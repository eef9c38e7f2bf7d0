#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace tavik {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
enum class MsgButtons { OK, OKCancel, YesNo };
enum class MsgResult { OK, Cancel, Yes, No };

// One message box as the program asks for it.
struct MessageRequest {
    QWidget* parent = nullptr;
    QString text;
    QString title;
    MsgIcon icon = MsgIcon::None;
    MsgButtons buttons = MsgButtons::OK;
};

using MessageHandler = std::function<MsgResult(const MessageRequest&)>;

// Shows a modal message box and returns the button pressed. An empty title gives the
// application's name, as the runtime's boxes have.
MsgResult MsgBox(QWidget* parent, const QString& text, MsgButtons buttons = MsgButtons::OK,
                 MsgIcon icon = MsgIcon::None, const QString& title = {});

// Lets a test answer every message box instead of a user; an empty handler restores the real
// boxes. Returns the handler that was in place.
MessageHandler SetMessageHandler(MessageHandler handler);

} // namespace tavik
