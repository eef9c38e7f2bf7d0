#pragma once

#include <QString>
#include <functional>
#include <optional>

class QWidget;

namespace tavik {

enum class MsgIcon { None, Critical, Question, Exclamation, Information };
// SaveDiscardCancel is the desktop's question before unsaved work would be lost.
enum class MsgButtons { OK, OKCancel, YesNo, SaveDiscardCancel };
enum class MsgResult { OK, Cancel, Yes, No, Save, Discard };

// One message box as the program asks for it.
struct MessageRequest {
    QWidget* parent = nullptr;
    QString text;
    QString title;
    MsgIcon icon = MsgIcon::None;
    MsgButtons buttons = MsgButtons::OK;
    // The button Enter presses; none given leaves the box's own default (Yes, OK, Save).
    std::optional<MsgResult> defaultButton;
};

using MessageHandler = std::function<MsgResult(const MessageRequest&)>;

// Shows a modal message box and returns the button pressed. An empty title gives the
// application's name, as the runtime's boxes have.
MsgResult MsgBox(QWidget* parent, const QString& text, MsgButtons buttons = MsgButtons::OK,
                 MsgIcon icon = MsgIcon::None, const QString& title = {},
                 std::optional<MsgResult> defaultButton = std::nullopt);

// Lets a test answer every message box instead of a user; an empty handler restores the real
// boxes. Returns the handler that was in place.
MessageHandler SetMessageHandler(MessageHandler handler);

} // namespace tavik
