#pragma once

class QAction;
class QMainWindow;
class QMenu;
class QUndoStack;

namespace tavik {

// A window's "Bearbeiten" menu with Undo (Ctrl+Z) and Redo (Ctrl+Shift+Z, Ctrl+Y) on `stack`:
// each enabled while there is a step to take, its runtime errors shown as any handler's, the
// keys working while the menu bar is hidden, and the window's modified mark following whether
// the stack is at its clean state. The window gives the menu and the actions their texts.
struct UndoMenu {
    QMenu* menu = nullptr;
    QAction* undo = nullptr;
    QAction* redo = nullptr;
};
UndoMenu AddUndoMenu(QMainWindow& window, QUndoStack& stack);

} // namespace tavik
