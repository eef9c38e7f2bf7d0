#include "service/frmdienst.h"
#include "service/servicefiles.h"

#include "app/frmmain.h"
#include "app/frmstatus.h"
#include "app/tavikapplication.h"
#include "service/serviceeditorrules.h"
#include "settings/applylanguage.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"
#include "util/windowplacement.h"
#include "util/zelcmd.h"

#include <QAction>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QTabBar>
#include <QTimer>
#include <QVBoxLayout>

namespace tavik {

namespace {

constexpr int kZoomSteps = 20;
constexpr int kTimerInterval = 100; // milliseconds
constexpr int kRefreshKey = 116;    // the character "t", not the function key F5
constexpr int kServicePage = 1;
constexpr int kPageCount = 4;

} // namespace

frmDienst::frmDienst(frmMain& main) : QMainWindow(&main, Qt::Window), main_(main) {
    setObjectName(QStringLiteral("frmDienst"));
    setWindowTitle(QStringLiteral("Diensteditor"));

    auto* central = new QWidget(this);
    auto* layout = new QVBoxLayout(central);
    ridDienst_ = new QTabBar(central);
    ridDienst_->setObjectName(QStringLiteral("ridDienst"));
    for (const QString& tab :
         {QStringLiteral("Eigenschaften"), QStringLiteral("Dienst"), QStringLiteral("Satz")})
        ridDienst_->addTab(tab);
    layout->addWidget(ridDienst_);
    // The pages share one place; only the visible one takes it.
    auto* pages = new QGridLayout;
    for (QWidget*& page : picTab_) {
        page = new QWidget(central);
        page->setObjectName(QStringLiteral("picTab"));
        pages->addWidget(page, 0, 0);
    }
    layout->addLayout(pages, 1);
    setCentralWidget(central);

    buildPropertiesPage();
    buildServicePage();
    buildSentencePage();
    buildOpenPage();
    buildMenus();
    buildExport();
    buildEditMenu();
    buildTextGuards();

    timer1_ = new QTimer(this);
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(kTimerInterval);

    resize(640, 420);
    connectHandlers();
    FormLoad();
    // The designed size, or more where the page shown needs it (the sentence's line of time):
    // placed as it will show, not grown after.
    resize(size().expandedTo(minimumSizeHint()));
    PlaceOnOwner(this, &main_);
}

frmDienst::~frmDienst() {
    // The lists are deleted after this part of the window, and their last signals (the rows
    // cleared) must not reach it.
    if (lsvDienst_) {
        lsvDienst_->model()->disconnect(this);
        lsvDienst_->selectionModel()->disconnect(this);
    }
}

void frmDienst::FormLoad() {
    ApplyLanguage(this, objectName(), main_.language().LanguageFile);
    // The tabs, column captions and list names come from numbered texts.
    FollowLanguage(this, main_.language(), [this] {
        const Language& language = main_.language();
        using namespace LangText;
        const std::int32_t tabs[] = {TabProperties, TabService, TabSentence};
        for (int i = 0; i < std::min<int>(ridDienst_->count(), std::size(tabs)); ++i)
            ridDienst_->setTabText(i, language.GetLangString(tabs[i]));
        lsvDienst_->SetColumnText(1, language.GetLangString(ColumnServiceKey));
        lsvDienst_->SetColumnText(2, language.GetLangString(ColumnServiceText));
        lsvSource_->SetColumnText(1, language.GetLangString(ColumnSourceName));
        lsvTarget_->SetColumnText(1, language.GetLangString(ColumnTimeShift));
        lsvTarget_->SetColumnText(2, language.GetLangString(ColumnTargetTitle));
        lsvDienst_->setAccessibleName(language.GetLangString(NameSentenceList));
        lstOpen_->setAccessibleName(language.GetLangString(NameServiceList));
        list1_->setAccessibleName(language.GetLangString(NameTitleList));
    });
    const AnnouncementTable& table = main_.table;
    const int count = std::min<int>(table.AnnouncementCount, table.Announcements.size());
    for (int i = 0; i < count; ++i) {
        const AnnouncementRecord& record = table.Announcements[i];
        if (record.Missing)
            continue;
        list1_->addItem(record.Title);
        ReportListItem* row = lsvSource_->AddItem(record.Title);
        row->SetTag(QString::number(i));
        if (record.Color != 0)
            row->SetForeColor(static_cast<quint32>(record.Color));
        if (i > kSourceRowsBeforeScrolling)
            lsvSource_->SetColumnWidth(1, kSourceNameWidthScrolling);
    }
    guarded(&frmDienst::FindFiles);
    setWindowIcon(main_.windowIcon());
    ShowPage(kServicePage);
    // A new service never takes an existing one's file.
    txtID_->setText(LowestFreeServiceId(main_.PackageFolder));
    startHistory();
    timer1_->start();
    Timer1_Timer();
}

void frmDienst::connectHandlers() {
    connect(ridDienst_, &QTabBar::tabBarClicked, this, [this](int index) {
        if (index >= 0)
            ShowPage(index);
    });
    onClick(cmdSv_, &frmDienst::cmdSv_Click);
    onClick(cmdEsc_, &frmDienst::cmdEsc_Click);

    onClick(cmdAdd_, &frmDienst::cmdAdd_Click);
    onClick(cmdRem_, &frmDienst::cmdRem_Click);
    onClick(cmdEdit_, &frmDienst::cmdEdit_Click);
    onClick(cmdUp_, &frmDienst::cmdUp_Click);
    onClick(cmdDown_, &frmDienst::cmdDown_Click);
    onClick(cmdPlay_, &frmDienst::cmdPlay_Click);
    onClick(cmdTausch_, &frmDienst::cmdTausch_Click);
    connect(lsvDienst_, &QTreeWidget::itemClicked, this,
            [this] { guarded(&frmDienst::lsvDienst_ItemClick); });
    connect(lsvDienst_, &QTreeWidget::itemDoubleClicked, this,
            [this] { guarded(&frmDienst::cmdEdit_Click); });
    connect(lsvDienst_->header(), &QHeaderView::sectionClicked, this,
            [this](int section) { lsvDienst_ColumnClick(section + 1); });
    connect(txtText_, &QLineEdit::textChanged, this,
            [this] { guarded(&frmDienst::txtText_Change); });

    onClick(cmdHinzu_, &frmDienst::cmdHinzu_Click);
    onClick(cmdEntf_, &frmDienst::cmdEntf_Click);
    onClick(cmdAuf_, &frmDienst::cmdAuf_Click);
    onClick(cmdAb_, &frmDienst::cmdAb_Click);
    onClick(cmdSearch_, &frmDienst::cmdSearch_Click);
    onClick(cmdAbsp_, &frmDienst::cmdAbsp_Click);
    onClick(cmdSave_, &frmDienst::cmdSave_Click);
    onClick(cmdCancel_, &frmDienst::cmdCancel_Click);
    connect(lsvSource_, &QTreeWidget::itemDoubleClicked, this,
            [this] { guarded(&frmDienst::cmdHinzu_Click); });
    connect(list1_, &QListWidget::itemDoubleClicked, this,
            [this] { guarded(&frmDienst::cmdHinzu_Click); });

    connect(lstOpen_, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row >= 0)
            guarded(&frmDienst::lstOpen_Click);
    });
    lstOpen_->installEventFilter(this);
    onClick(cmdOpen_, &frmDienst::cmdOpen_Click);
    onClick(cmdAbbr_, &frmDienst::cmdAbbr_Click);
    onClick(cmdKill_, &frmDienst::cmdKill_Click);
    onClick(cmdRefresh_, &frmDienst::cmdRefresh_Click);

    const std::pair<QAction*, void (frmDienst::*)()> menus[] = {
        {mnuNew_, &frmDienst::mnuNew_Click},
        {mnuOpen_, &frmDienst::mnuOpen_Click},
        {mnuSave_, &frmDienst::mnuSave_Click},
        {mnuClose_, &frmDienst::mnuClose_Click},
    };
    for (const auto& [action, handler] : menus)
        connect(action, &QAction::triggered, this, [this, handler] { guarded(handler); });

    connect(timer1_, &QTimer::timeout, this, [this] { guarded(&frmDienst::Timer1_Timer); });
}

void frmDienst::onClick(zelcmd* button, void (frmDienst::*handler)()) {
    connect(button, &QPushButton::clicked, this, [this, handler] { guarded(handler); });
}

void frmDienst::guarded(void (frmDienst::*handler)()) {
    // Events run while a sentence plays; the window may be gone when the handler returns.
    const QPointer<frmDienst> self(this);
    RunHandler([this, handler] { (this->*handler)(); });
    if (self && handler != &frmDienst::Timer1_Timer)
        noteChange(handler == &frmDienst::txtText_Change ? 5 : -1);
}

void frmDienst::zoom(QWidget* from, QWidget* to) {
    main_.FadeInEffect(from, to, kZoomSteps);
}

void frmDienst::ShowPage(int page) {
    if (page < 0 || page >= kPageCount)
        throw RuntimeError(rt::SubscriptOutOfRange);
    for (QWidget* p : picTab_)
        p->setVisible(false);
    picTab_[page]->setVisible(true);
    // The tab strip follows the page where the page has a tab; the open page has none.
    if (page < ridDienst_->count()) {
        const QSignalBlocker quiet(ridDienst_);
        ridDienst_->setCurrentIndex(page);
    }
}

int frmDienst::CurrentPage() const {
    for (int page = 0; page < kPageCount; ++page) {
        if (!picTab_[page]->isHidden())
            return page;
    }
    return -1;
}

void frmDienst::setMenusEnabled(bool enabled) {
    mnuSave_->setEnabled(enabled);
    mnuNew_->setEnabled(enabled);
    mnuOpen_->setEnabled(enabled);
}

void frmDienst::Timer1_Timer() {
    const DienstCommandStates c =
        DienstCommandsFor({lsvDienst_->Count() > 0, lsvTarget_->Count() > 0, IsPlaying});
    cmdEdit_->setEnabled(c.cmdEdit);
    cmdRem_->setEnabled(c.cmdRem);
    cmdUp_->setEnabled(c.cmdUp);
    cmdDown_->setEnabled(c.cmdDown);
    cmdPlay_->setEnabled(c.cmdPlay);
    if (!c.txtText && !txtText_->text().isEmpty())
        txtText_->clear();
    txtText_->setEnabled(c.txtText);
    cmdAuf_->setEnabled(c.cmdAuf);
    cmdAb_->setEnabled(c.cmdAb);
    cmdEntf_->setEnabled(c.cmdEntf);
    cmdSave_->setEnabled(c.cmdSave);
    cmdAbsp_->setEnabled(c.cmdAbsp);
    cmdAdd_->setEnabled(c.cmdAdd);
}

bool frmDienst::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lstOpen_ && event->type() == QEvent::KeyPress) {
        const QString typed = static_cast<QKeyEvent*>(event)->text();
        if (typed.size() == 1)
            lstOpen_KeyPress(typed.front().unicode());
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmDienst::lstOpen_KeyPress(int keyAscii) {
    if (keyAscii != kRefreshKey)
        return;
    lstOpen_->clear();
    guarded(&frmDienst::FindFiles);
}

void frmDienst::mnuClose_Click() {
    close();
}

void frmDienst::closeEvent(QCloseEvent* event) {
    bool goOn = false;
    RunHandler([this, &goOn] { goOn = MaySaveOrDiscard(); });
    if (!goOn) {
        event->ignore();
        return;
    }
    timer1_->stop();
    // The main window takes over from here: it enables itself and zooms back to its button.
    Q_EMIT Unloaded();
    event->accept();
}

} // namespace tavik
