#include "settings/applylanguage.h"

#include "settings/language.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QWidget>

namespace tavik {

namespace {

// A label that shows a picture is a picture area, not a caption.
bool isTextLabel(const QLabel* label) {
    return label->pixmap().isNull() && label->movie() == nullptr;
}

bool isHandled(const QObject* o) {
    if (const auto* label = qobject_cast<const QLabel*>(o))
        return isTextLabel(label);
    return qobject_cast<const QPushButton*>(o) || qobject_cast<const QCheckBox*>(o) ||
           qobject_cast<const QRadioButton*>(o) || qobject_cast<const QGroupBox*>(o) ||
           qobject_cast<const QMenu*>(o) || qobject_cast<const QAction*>(o);
}

void setText(QObject* o, const ControlText& t) {
    if (auto* menu = qobject_cast<QMenu*>(o)) {
        menu->setTitle(t.caption);
        return;
    }
    if (auto* action = qobject_cast<QAction*>(o)) {
        action->setText(t.caption);
        return;
    }
    if (auto* label = qobject_cast<QLabel*>(o))
        label->setText(t.caption);
    else if (auto* button = qobject_cast<QAbstractButton*>(o))
        button->setText(t.caption);
    else if (auto* frame = qobject_cast<QGroupBox*>(o))
        frame->setTitle(t.caption);
    if (t.hasToolTip)
        static_cast<QWidget*>(o)->setToolTip(t.toolTip);
}

// The window's own controls in creation order, depth first. Another window owned by this one
// (a dialog, the status window) has its own section and is left out; a menu is a popup window
// of its own kind but belongs to the form.
void collectControls(const QObject* parent, QObjectList& out) {
    for (QObject* child : parent->children()) {
        if (auto* w = qobject_cast<QWidget*>(child); w && w->isWindow() && !qobject_cast<QMenu*>(w))
            continue;
        out.append(child);
        collectControls(child, out);
    }
}

} // namespace

void ApplyLanguage(QWidget* form, const QString& section, const QString& file) {
    const QString caption = ReadLanguageValue(file, section, QStringLiteral("Caption"));
    if (!caption.isEmpty())
        form->setWindowTitle(caption);

    QObjectList controls;
    collectControls(form, controls);
    for (QObject* control : controls) {
        if (!isHandled(control) || control->objectName().isEmpty())
            continue;
        const QString v = ReadLanguageValue(file, section, control->objectName());
        if (v.isEmpty())
            continue;
        setText(control, ParseControlText(v));
    }
}

} // namespace tavik
