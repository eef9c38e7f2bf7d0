#include "app/frmmain.h"

#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>

// The main window's keys. Each one presses its button, so a key does what the button does, no
// more, and nothing while the button is disabled. Keys that a list or a button also reads
// (Space, Delete, Enter) count only while the announcement list has the focus.

namespace tavik {

namespace {

constexpr std::int32_t kMenuFile = 502;
constexpr std::int32_t kMenuProperties = 503;
constexpr std::int32_t kMenuMoveUp = 504;
constexpr std::int32_t kMenuMoveDown = 505;
constexpr std::int32_t kMenuRemove = 507;

// A standard key where the platform has one, else `fallback`.
QList<QKeySequence> standardOr(QKeySequence::StandardKey key, const QKeySequence& fallback) {
    QList<QKeySequence> keys = QKeySequence::keyBindings(key);
    if (!keys.contains(fallback))
        keys.prepend(fallback);
    return keys;
}

QAction* keyAction(const char* name, const QList<QKeySequence>& keys, zelcmd* button,
                   QWidget* scope, Qt::ShortcutContext context) {
    auto* action = new QAction(scope);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcuts(keys);
    action->setShortcutContext(context);
    scope->addAction(action);
    QObject::connect(action, &QAction::triggered, button, [button] { button->click(); });
    return action;
}

} // namespace

void frmMain::buildKeys() {
    mnuFile_ = new QMenu(QStringLiteral("Da&tei"), this);
    mnuFile_->setObjectName(QStringLiteral("mnuFile"));
    menuBar()->insertMenu(mnuEdit_->menuAction(), mnuFile_);

    const auto windowKey = [this](const char* name, const QList<QKeySequence>& keys,
                                  zelcmd* button) {
        return keyAction(name, keys, button, this, Qt::WindowShortcut);
    };
    const auto listKey = [this](const char* name, const QList<QKeySequence>& keys, zelcmd* button) {
        return keyAction(name, keys, button, lsvPack_, Qt::WidgetShortcut);
    };
    mnuNew_ = windowKey("mnuNew", standardOr(QKeySequence::New, Qt::CTRL | Qt::Key_N), cmdNew_);
    mnuOpen_ = windowKey("mnuOpen", standardOr(QKeySequence::Open, Qt::CTRL | Qt::Key_O), cmdOpen_);
    mnuSave_ = windowKey("mnuSave", standardOr(QKeySequence::Save, Qt::CTRL | Qt::Key_S), cmdSave_);
    // The exit button closes the window: the same questions about unsaved changes.
    mnuQuit_ = windowKey("mnuQuit", standardOr(QKeySequence::Quit, Qt::CTRL | Qt::Key_Q), cmdExit_);
    mnuFile_->addActions({mnuNew_, mnuOpen_, mnuSave_});
    mnuFile_->addSeparator();
    mnuFile_->addAction(mnuQuit_);

    mnuRemove_ = listKey("mnuRemove", standardOr(QKeySequence::Delete, Qt::Key_Delete), cmdRemove_);
    mnuProperties_ = new QAction(this);
    mnuProperties_->setObjectName(QStringLiteral("mnuProperties"));
    mnuProperties_->setShortcut(Qt::Key_F2);
    addAction(mnuProperties_);
    connect(mnuProperties_, &QAction::triggered, this, [this] { lsvPack_DblClick(); });
    // Enter in the list opens the properties as a double click does.
    auto* enter = new QAction(lsvPack_);
    enter->setObjectName(QStringLiteral("mnuPropertiesByEnter"));
    enter->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
    enter->setShortcutContext(Qt::WidgetShortcut);
    lsvPack_->addAction(enter);
    connect(enter, &QAction::triggered, mnuProperties_, &QAction::trigger);
    mnuPlay_ = listKey("mnuPlay", {Qt::Key_Space}, cmdPlay_);
    mnuMoveUp_ = windowKey("mnuMoveUp", {Qt::ALT | Qt::Key_Up}, cmdUp_);
    mnuMoveDown_ = windowKey("mnuMoveDown", {Qt::ALT | Qt::Key_Down}, cmdDown_);
    mnuEdit_->addSeparator();
    mnuEdit_->addActions({mnuRemove_, mnuProperties_, mnuPlay_, mnuMoveUp_, mnuMoveDown_});

    mnuReadme_->setShortcuts(standardOr(QKeySequence::HelpContents, Qt::Key_F1));
    mnuReadme_->setShortcutContext(Qt::WindowShortcut);
    addAction(mnuReadme_);

    // A menu shows what its button would do now; its keys stay ready, pressing a disabled
    // button does nothing.
    const QList<std::pair<QAction*, zelcmd*>> mirrored = {
        {mnuNew_, cmdNew_},   {mnuOpen_, cmdOpen_},     {mnuSave_, cmdSave_},
        {mnuQuit_, cmdExit_}, {mnuRemove_, cmdRemove_}, {mnuProperties_, cmdSort_},
        {mnuPlay_, cmdPlay_}, {mnuMoveUp_, cmdUp_},     {mnuMoveDown_, cmdDown_}};
    for (QMenu* menu : {mnuFile_, mnuEdit_}) {
        connect(menu, &QMenu::aboutToShow, this, [mirrored] {
            for (const auto& [action, button] : mirrored)
                action->setEnabled(button->isEnabled());
        });
        connect(menu, &QMenu::aboutToHide, this, [mirrored] {
            for (const auto& [action, button] : mirrored)
                action->setEnabled(true);
        });
    }
}

void frmMain::ApplyMenuTexts() {
    applySortTexts();
    applyLoudnessTexts();
    if (!mnuFile_)
        return;
    const auto text = [this](std::int32_t number, const QString& designed) {
        return LangTextOr(language_, number, designed);
    };
    mnuFile_->setTitle(text(kMenuFile, QStringLiteral("Da&tei")));
    // The entries are named as the buttons they press.
    mnuNew_->setText(cmdNew_->Caption());
    mnuOpen_->setText(cmdOpen_->Caption());
    mnuSave_->setText(cmdSave_->Caption());
    mnuQuit_->setText(cmdExit_->Caption());
    mnuPlay_->setText(cmdPlay_->Caption());
    mnuProperties_->setText(text(kMenuProperties, QStringLiteral("E&igenschaften...")));
    mnuMoveUp_->setText(text(kMenuMoveUp, QStringLiteral("Eine Position nach &oben")));
    mnuMoveDown_->setText(text(kMenuMoveDown, QStringLiteral("Eine Position nach &unten")));
    // Its own text: the button's access key is the one of Redo in some languages.
    mnuRemove_->setText(text(kMenuRemove, QStringLiteral("&Entfernen")));
}

} // namespace tavik
