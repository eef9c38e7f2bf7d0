#pragma once

#include <QApplication>
#include <QKeyEvent>
#include <QString>
#include <QTest>
#include <QWidget>

namespace tavik::test {

// Types `text` into `widget` one character at a time, as a keyboard would, also characters
// no key of QTest names (an arrow, a Polish or Cyrillic letter, an emoji as one character).
inline void typeText(QWidget* widget, const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        const QString character = text.mid(i, pair ? 2 : 1);
        if (pair)
            ++i;
        if (character == u"\n") {
            QTest::keyClick(widget, Qt::Key_Return);
            continue;
        }
        if (character.size() == 1 && character[0].unicode() < 0x7F &&
            character[0].unicode() >= 0x20) {
            QTest::keyClicks(widget, character);
            continue;
        }
        QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, character);
        QApplication::sendEvent(widget, &press);
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_unknown, Qt::NoModifier, character);
        QApplication::sendEvent(widget, &release);
    }
}

} // namespace tavik::test
