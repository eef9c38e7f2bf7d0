// The selected sentence of the service list as a line of time under the list.
#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "service/sentencetimeline.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"

#include <QItemSelectionModel>

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
    return timeline_;
}

void frmDienst::refreshTimeline() {
    if (!timeline_)
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

} // namespace tavik
