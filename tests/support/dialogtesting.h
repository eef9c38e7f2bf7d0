#pragma once

#include "app/tavikapplication.h"
#include "support/errorcatcher.h"

#include <QApplication>
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>

namespace tavik::test {

// Answers the next visible window of type `Window` that the code under test opens modally:
// `answer` runs on it once it shows. If none shows within five seconds the active modal
// window is closed, so a test fails instead of hanging.
template <typename Window> void whenShown(std::function<void(Window&)> answer) {
    auto* timer = new QTimer(qApp);
    timer->setInterval(10);
    auto ticks = std::make_shared<int>(0);
    QObject::connect(timer, &QTimer::timeout, [timer, answer, ticks] {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* window = qobject_cast<Window*>(widget);
            if (window && window->isVisible() && QApplication::activeModalWidget() == window) {
                timer->stop();
                timer->deleteLater();
                answer(*window);
                return;
            }
        }
        if (++*ticks > 500) {
            timer->stop();
            timer->deleteLater();
            ADD_FAILURE() << "the expected window never showed";
            if (QWidget* modal = QApplication::activeModalWidget())
                modal->close();
        }
    });
    timer->start();
}

} // namespace tavik::test
