#include "app/frmmain.h"

#include "app/loudnessjob.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>
#include <algorithm>

// The list's optional loudness column: off at start, switched on in the View menu. It is
// measured away from the window after each change of the list's rows; sounds measured before
// come from the user's cache, so only new or changed sounds cost decoding.

namespace tavik {

namespace {

constexpr int kTitleColumn = 1;
constexpr int kLoudnessColumn = 4; // after key, title, format and play time
constexpr double kLoudnessColumnWidth = 1200.0;
// Rows come and go in bursts (a load, an import, an undo): measured once they settle.
constexpr int kSettleMs = 300;

} // namespace

void frmMain::buildLoudnessColumn() {
    mnuView_ = menuBar()->addMenu(QStringLiteral("Ansi&cht"));
    mnuView_->setObjectName(QStringLiteral("mnuView"));
    mnuLoudness_ = mnuView_->addAction(QStringLiteral("&Lautheit"));
    mnuLoudness_->setObjectName(QStringLiteral("mnuLoudness"));
    mnuLoudness_->setCheckable(true);
    connect(mnuLoudness_, &QAction::toggled, this, [this](bool on) { ShowLoudnessColumn(on); });

    loudnessJob_ = new LoudnessJob(this);
    connect(loudnessJob_, &LoudnessJob::Finished, this,
            [this](const LoudnessCheck& result) { applyListLoudness(result); });
    tmrLoudness_ = new QTimer(this);
    tmrLoudness_->setSingleShot(true);
    tmrLoudness_->setInterval(kSettleMs);
    connect(tmrLoudness_, &QTimer::timeout, this, [this] { measureListLoudness(); });
    const auto rowsChanged = [this] {
        if (LoudnessColumnShown())
            tmrLoudness_->start();
    };
    QAbstractItemModel* model = lsvPack_->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, rowsChanged);
    connect(model, &QAbstractItemModel::rowsRemoved, this, rowsChanged);
    connect(model, &QAbstractItemModel::modelReset, this, rowsChanged);
}

void frmMain::applyLoudnessTexts() {
    if (!mnuView_)
        return;
    mnuView_->setTitle(LangTextOr(language_, LangText::MenuView, QStringLiteral("Ansi&cht")));
    mnuLoudness_->setText(
        LangTextOr(language_, LangText::MenuLoudnessColumn, QStringLiteral("&Lautheit")));
    if (LoudnessColumnShown())
        lsvPack_->SetColumnText(kLoudnessColumn + 1, loudnessColumnTitle());
}

QString frmMain::loudnessColumnTitle() const {
    return LangTextOr(language_, LangText::LoudnessColumn, QStringLiteral("Lautheit"));
}

bool frmMain::LoudnessColumnShown() const {
    // Absent, not hidden, while off: screen readers then find only the columns shown.
    return lsvPack_->ColumnHeadersCount() > kLoudnessColumn;
}

void frmMain::fitLoudnessColumn() {
    if (!LoudnessColumnShown())
        return;
    // The title column gives the loudness column its room, so that the list does not scroll
    // sideways for it; it gets the room back when the column goes.
    const int title = lsvPack_->columnWidth(kTitleColumn);
    const int narrower =
        std::max(std::min(title, 120), title - lsvPack_->columnWidth(kLoudnessColumn));
    loudnessRoom_ = title - narrower;
    lsvPack_->setColumnWidth(kTitleColumn, narrower);
}

bool frmMain::MeasuringListLoudness() const {
    return loudnessJob_->Running() || tmrLoudness_->isActive();
}

void frmMain::ShowLoudnessColumn(bool shown) {
    if (mnuLoudness_->isChecked() != shown)
        mnuLoudness_->setChecked(shown); // comes back here through toggled
    if (shown == LoudnessColumnShown())
        return;
    if (shown) {
        lsvPack_->AddColumn(loudnessColumnTitle(), kLoudnessColumnWidth);
        fitLoudnessColumn();
        measureListLoudness();
    } else {
        lsvPack_->RemoveLastColumn();
        lsvPack_->setColumnWidth(kTitleColumn, lsvPack_->columnWidth(kTitleColumn) + loudnessRoom_);
        loudnessRoom_ = 0;
        tmrLoudness_->stop();
        loudnessJob_->Stop();
    }
}

void frmMain::measureListLoudness() {
    QList<CheckedAnnouncement> list;
    for (int i = 0; i < table.AnnouncementCount && i < table.Announcements.size(); ++i) {
        const AnnouncementRecord& record = table.Announcements[i];
        CheckedAnnouncement a;
        a.Key = record.Key;
        a.Position = i + 1;
        a.Measured = record.Opened && !record.FilePath.isEmpty();
        a.SoundPath = record.FilePath;
        list << a;
    }
    loudnessJob_->Start(list);
}

void frmMain::applyListLoudness(const LoudnessCheck& result) {
    if (!LoudnessColumnShown())
        return;
    QHash<QString, const AnnouncementLoudness*> byKey;
    for (const AnnouncementLoudness& a : result.announcements)
        byKey.insert(a.key, &a);
    for (int i = 1; i <= lsvPack_->Count(); ++i) {
        ReportListItem* row = lsvPack_->ListItems(i);
        const AnnouncementLoudness* found = byKey.value(row->Text());
        ReportListSubItem cell = row->SubItem(kLoudnessColumn);
        if (!found) {
            cell.SetText(QString());
            cell.SetToolTipText(QString());
            continue;
        }
        const Loudness& l = found->loudness;
        const QString lufs = LoudnessFigure(l.integratedLufs.value_or(-200.0));
        cell.SetText(lufs);
        cell.SetToolTipText(language_.GetLangString(LangText::LoudnessCellTip, lufs,
                                                    LoudnessFigure(l.truePeakDbtp)));
    }
}

} // namespace tavik
