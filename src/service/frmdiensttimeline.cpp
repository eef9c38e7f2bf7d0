// The selected sentence of the service list as a line of time under the list.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "audio/modmci.h"
#include "service/sentencetimeline.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"

#include <QItemSelectionModel>
#include <QTimer>

namespace tavik {

SentenceTimeline* frmDienst::buildTimeline(QWidget* parent) {
    timeline_ = new SentenceTimeline(parent);
    // Follows the selection, and every change of the service (each is one step of undo).
    connect(lsvDienst_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { refreshTimeline(); });
    connect(lsvDienst_->model(), &QAbstractItemModel::modelReset, this,
            [this] { refreshTimeline(); });
    connect(lsvDienst_->model(), &QAbstractItemModel::rowsRemoved, this,
            [this] { refreshTimeline(); });
    connect(timeline_, &SentenceTimeline::shiftDragged, this,
            [this](int entry, std::int16_t shift) { setDraggedShift(entry, shift); });
    return timeline_;
}

void frmDienst::refreshTimeline() {
    // A step of undo rebuilds the list row by row and draws the timeline once at its end.
    if (!timeline_ || restoring_)
        return;
    const Language& language = main_.language();
    timeline_->setAccessibleName(
        LangTextOr(language, LangText::TimelineName, QStringLiteral("Satz als Zeitleiste")));
    const ReportListItem* row = lsvDienst_->SelectedItem();
    if (!row) {
        timeline_->setProblem(LangTextOr(language, LangText::TimelineNoSentence,
                                         QStringLiteral("Einen Satz wählen, um ihn als "
                                                        "Zeitleiste zu sehen.")));
        return;
    }
    try {
        const std::int32_t index = sentences.SentenceIndex(row->Text());
        const SatzRecord& satz = Saetze()[index];
        timeline_->setBlocks(LayoutTimeline(main_.table, satz));
        QStringList parts;
        for (const TimelineBlock& b : timeline_->blocks())
            parts << b.title + u' ' + QString::number(b.startMs) + u'-' +
                         QString::number(b.stopMs) + QStringLiteral(" ms");
        timeline_->setAccessibleDescription(timeline_->lengthText() + QStringLiteral(": ") +
                                            parts.join(QStringLiteral("; ")));
    } catch (const RuntimeError&) {
        timeline_->setProblem(LangTextOr(language, LangText::TimelineBroken,
                                         QStringLiteral("Dieser Satz nennt eine Ansage, die das "
                                                        "Paket nicht mehr hat.")));
    }
}

void frmDienst::setDraggedShift(int entry, std::int16_t shift) {
    const ReportListItem* row = lsvDienst_->SelectedItem();
    if (!row || IsPlaying)
        return;
    try {
        SatzRecord& satz = Saetze()[sentences.SentenceIndex(row->Text())];
        if (entry < 0 || entry >= satz.Targets.size())
            return;
        satz.Targets[entry].TimeOffset = shift;
    } catch (const RuntimeError&) {
        return;
    }
    // Each drag is one step of undo.
    noteChange();
    refreshTimeline();
}

void frmDienst::followPlay(const SatzRecord& playing) {
    if (!timeline_)
        return;
    try {
        timeline_->setBlocks(LayoutTimeline(main_.table, playing));
    } catch (const RuntimeError&) {
        // The player raises the same error at the entry; nothing to follow.
        return;
    }
    playingEntry_ = -1;
    timeline_->setEditable(false);
    if (!cursorTimer_) {
        cursorTimer_ = new QTimer(this);
        // About two frames of a screen: smooth enough, and little work beside the sound.
        cursorTimer_->setInterval(25);
        connect(cursorTimer_, &QTimer::timeout, this, [this] { moveCursor(); });
    }
    cursorTimer_->start();
}

void frmDienst::notePlayStep(const QString& logLine) {
    // The player names each entry in the log as it starts it.
    if (!logLine.startsWith(QStringLiteral("\tPLAY ")))
        return;
    ++playingEntry_;
    // Named before it is sought and started: its sound may still stand where an earlier play
    // left it, so the cursor starts at the entry's start.
    moveCursor(true);
}

void frmDienst::moveCursor(bool entryStarts) {
    if (!timeline_)
        return;
    const QList<TimelineBlock>& blocks = timeline_->blocks();
    if (playingEntry_ < 0 || playingEntry_ >= blocks.size()) {
        timeline_->setPlayCursor(-1, -1);
        return;
    }
    const TimelineBlock& block = blocks[playingEntry_];
    // The output's own position of the sound that plays: no clock of the window's.
    const qint64 position = entryStarts ? 0 : main_.mci().PlayPosition(block.key);
    const qint64 at = position < 0
                          ? block.startMs
                          : block.startMs + std::min(position, block.stopMs - block.startMs);
    timeline_->setPlayCursor(at, playingEntry_);
    markPlayingRow(playingEntry_);
}

void frmDienst::markPlayingRow(int entry) {
    // The entries' list on the sentence page shows the one that plays in bold; the selection
    // stays the user's.
    for (int r = 1; r <= lsvTarget_->Count(); ++r) {
        ReportListItem* row = lsvTarget_->ListItems(r);
        if (row->Bold() != (r == entry + 1))
            row->SetBold(r == entry + 1);
    }
}

void frmDienst::endPlayCursor() {
    if (cursorTimer_)
        cursorTimer_->stop();
    playingEntry_ = -1;
    if (timeline_) {
        timeline_->setPlayCursor(-1, -1);
        timeline_->setEditable(true);
    }
    markPlayingRow(-1);
    refreshTimeline();
}

} // namespace tavik
