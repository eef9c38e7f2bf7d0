#include "util/accessiblenames.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSet>
#include <QTextEdit>
#include <QVariant>

namespace tavik {

namespace {

// Marks a name this routine derived, so that it may be replaced when its source changes.
constexpr const char* kDerivedName = "tavikDerivedAccessibleName";

void setDerivedName(QWidget* w, const QString& name) {
    const bool derived = w->property(kDerivedName).toBool();
    if (!derived && !w->accessibleName().isEmpty())
        return; // named by its window
    w->setAccessibleName(name);
    w->setProperty(kDerivedName, !name.isEmpty());
}

// The line edit of an editable drop-down list or a list's cell editor is part of that control.
bool partOfAnotherControl(const QWidget* w) {
    for (const QWidget* p = w->parentWidget(); p; p = p->parentWidget()) {
        if (qobject_cast<const QComboBox*>(p) || qobject_cast<const QAbstractItemView*>(p))
            return true;
        if (p->isWindow())
            break;
    }
    return false;
}

bool takesFrameName(const QWidget* w) {
    if (partOfAnotherControl(w))
        return false;
    return qobject_cast<const QAbstractItemView*>(w) || qobject_cast<const QComboBox*>(w) ||
           qobject_cast<const QPlainTextEdit*>(w) || qobject_cast<const QTextEdit*>(w) ||
           qobject_cast<const QLineEdit*>(w);
}

QString frameTitleAround(const QWidget* w, const QWidget* window) {
    for (const QWidget* p = w->parentWidget(); p && p != window; p = p->parentWidget()) {
        if (const auto* frame = qobject_cast<const QGroupBox*>(p))
            return WithoutAccessKey(frame->title());
    }
    return QString();
}

} // namespace

QString WithoutAccessKey(QString caption) {
    QString out;
    out.reserve(caption.size());
    for (qsizetype i = 0; i < caption.size(); ++i) {
        if (caption[i] == QLatin1Char('&') && i + 1 < caption.size())
            ++i;
        else if (caption[i] == QLatin1Char('&'))
            continue;
        out += caption[i];
    }
    return out;
}

void NameControlsForAccessibility(QWidget* window) {
    const QList<QWidget*> widgets = window->findChildren<QWidget*>();
    QSet<const QWidget*> labelled;
    for (const QWidget* w : widgets) {
        if (const auto* label = qobject_cast<const QLabel*>(w); label && label->buddy())
            labelled.insert(label->buddy());
    }
    for (QWidget* w : widgets) {
        if (w->window() != window)
            continue;
        if (auto* button = qobject_cast<QAbstractButton*>(w)) {
            const QString caption = WithoutAccessKey(button->text());
            setDerivedName(button, caption.isEmpty() ? button->toolTip() : QString());
        } else if (takesFrameName(w) && !labelled.contains(w)) {
            setDerivedName(w, frameTitleAround(w, window));
        }
    }
}

} // namespace tavik
