#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace tavik {

// One question for a line of text, as the program asks it.
struct InputRequest {
    QWidget* parent = nullptr;
    QString prompt;
    QString title;
    QString defaultText;
};

// The answer, or "" when the user cancels.
using InputHandler = std::function<QString(const InputRequest&)>;

// Asks for one line of text in a modal box with OK and Cancel. An empty title gives the
// application's name; cancelling gives "".
QString InputBox(QWidget* parent, const QString& prompt, const QString& title = {},
                 const QString& defaultText = {});

// Lets a test answer every input box instead of a user; an empty handler restores the real
// boxes. Returns the handler that was in place.
InputHandler SetInputHandler(InputHandler handler);

} // namespace tavik
