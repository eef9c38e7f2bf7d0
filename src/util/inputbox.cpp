#include "util/inputbox.h"

#include <QApplication>
#include <QInputDialog>

namespace tavik {

namespace {

InputHandler& handler() {
    static InputHandler current;
    return current;
}

} // namespace

QString InputBox(QWidget* parent, const QString& prompt, const QString& title,
                 const QString& defaultText) {
    const InputRequest request{
        parent, prompt, title.isEmpty() ? QApplication::applicationName() : title, defaultText};
    if (handler())
        return handler()(request);
    bool ok = false;
    const QString answer =
        QInputDialog::getText(parent, request.title, prompt, QLineEdit::Normal, defaultText, &ok);
    return ok ? answer : QString();
}

InputHandler SetInputHandler(InputHandler replacement) {
    InputHandler previous = std::move(handler());
    handler() = std::move(replacement);
    return previous;
}

} // namespace tavik
