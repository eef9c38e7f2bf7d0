#include "service/frmdienst.h"

#include "app/frmmain.h"
#include "audio/sentencerender.h"
#include "settings/language.h"
#include "util/filedialog.h"
#include "util/fileops.h"
#include "util/msgbox.h"
#include "util/reportlist.h"
#include "util/runtimeerror.h"

#include <QAction>
#include <QFileInfo>
#include <QMenuBar>

namespace tavik {

namespace {

constexpr int kExportTitle = 180;
constexpr int kExportFilter = 181;
constexpr int kExportNothingSelected = 182;
constexpr int kExportTooLong = 183;

// What the add-on's sound cards take without converting: CD rate, stereo.
constexpr OutputFormat kExportFormat{44100, 2};

} // namespace

void frmDienst::buildExport() {
    mnuExport_ = menuBar()->addAction(QStringLiteral("Satz als &WAV speichern..."));
    mnuExport_->setObjectName(QStringLiteral("mnuExport"));
    connect(mnuExport_, &QAction::triggered, this,
            [this] { guarded(&frmDienst::mnuExport_Click); });
}

void frmDienst::mnuExport_Click() {
    const Language& language = main_.language();
    const ReportListItem* row = lsvDienst_->SelectedItem();
    if (!row) {
        MsgBox(this, language.GetLangString(kExportNothingSelected), MsgButtons::OK,
               MsgIcon::Exclamation);
        return;
    }
    const std::int32_t k = sentences.FindTargetByKey(row->Text());
    if (k < 0 || k >= Saetze().size())
        throw RuntimeError(rt::SubscriptOutOfRange);
    // A copy: the sentence is rendered from the same schedule the player follows.
    const SatzRecord satz = Saetze()[k];
    QString path = ShowSaveDialog(this, main_.PackageFolder, language.GetLangString(kExportTitle),
                                  language.GetLangString(kExportFilter));
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".wav");
    if (!RenderSentenceToFile(main_.table, satz, kExportFormat, path))
        MsgBox(this, language.GetLangString(kExportTooLong, path), MsgButtons::OK,
               MsgIcon::Exclamation);
}

} // namespace tavik
