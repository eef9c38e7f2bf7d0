#include "app/undomenu.h"

#include "app/tavikapplication.h"

#include <QAction>
#include <QKeySequence>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QUndoStack>

namespace tavik {

UndoMenu AddUndoMenu(QMainWindow& window, QUndoStack& stack) {
    UndoMenu m;
    m.menu = window.menuBar()->addMenu(QStringLiteral("Bea&rbeiten"));
    m.menu->setObjectName(QStringLiteral("mnuEdit"));
    m.undo = m.menu->addAction(QStringLiteral("&Rückgängig"));
    m.undo->setObjectName(QStringLiteral("mnuUndo"));
    m.undo->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Z)});
    m.redo = m.menu->addAction(QStringLiteral("&Wiederherstellen"));
    m.redo->setObjectName(QStringLiteral("mnuRedo"));
    m.redo->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    for (QAction* action : {m.undo, m.redo}) {
        action->setShortcutContext(Qt::WindowShortcut);
        action->setEnabled(false);
        // Also while the menu bar is hidden by a platform.
        window.addAction(action);
    }
    QUndoStack* steps = &stack;
    QObject::connect(m.undo, &QAction::triggered, &window,
                     [steps] { RunHandler([steps] { steps->undo(); }); });
    QObject::connect(m.redo, &QAction::triggered, &window,
                     [steps] { RunHandler([steps] { steps->redo(); }); });
    QObject::connect(steps, &QUndoStack::canUndoChanged, m.undo, &QAction::setEnabled);
    QObject::connect(steps, &QUndoStack::canRedoChanged, m.redo, &QAction::setEnabled);
    QMainWindow* shown = &window;
    QObject::connect(steps, &QUndoStack::cleanChanged, shown,
                     [shown](bool clean) { shown->setWindowModified(!clean); });
    return m;
}

} // namespace tavik
