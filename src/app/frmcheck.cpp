#include "frmcheck.h"

#include "app/frmmain.h"
#include "app/loudnessjob.h"
#include "audio/mcipackagesounds.h"
#include "package/findingdetail.h"
#include "settings/followlanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "util/reportlist.h"

#include <QLabel>
#include <QVBoxLayout>

namespace tavik {

namespace {

std::int32_t severityText(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return LangText::CheckError;
    case Severity::Warning:
        return LangText::CheckWarning;
    case Severity::Note:
        return LangText::CheckNote;
    }
    return LangText::CheckNote;
}

// The finding's detail in the window's language.
QString detailIn(const Language& lang, const Finding& f) {
    return localDetail(f.detail, [&lang](int number, const QStringList& args) {
        return lang.GetLangString(number, args.value(0), args.value(1), args.value(2));
    });
}

} // namespace

frmCheck::frmCheck(frmMain& main)
    : QWidget(&main, Qt::Window), main_(main), lsvFindings_(new ReportList(this)),
      lblSummary_(new QLabel(this)), loudnessJob_(new LoudnessJob(this)) {
    setObjectName(QStringLiteral("frmCheck"));
    lsvFindings_->setObjectName(QStringLiteral("lsvFindings"));
    lblSummary_->setObjectName(QStringLiteral("lblSummary"));
    lblSummary_->setWordWrap(true);
    for (const double width : {1100.0, 1500.0, 1800.0, 6000.0})
        lsvFindings_->AddColumn(QString(), width);
    lsvFindings_->setMinimumSize(640, 260);
    connect(lsvFindings_, &QTreeWidget::itemDoubleClicked, this,
            [this] { lsvFindings_DblClick(); });
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lsvFindings_);
    layout->addWidget(lblSummary_);
    connect(loudnessJob_, &LoudnessJob::Progress, this, [this](int done, int total) {
        measured_ = done;
        toMeasure_ = total;
        showSummary();
    });
    connect(loudnessJob_, &LoudnessJob::Finished, this, [this](const LoudnessCheck& result) {
        loudness_ = result;
        findings_ << result.findings;
        fillRows();
    });
    // The window follows a change of language, its findings included.
    FollowLanguage(this, main_.language(), [this] {
        applyTexts();
        fillRows();
    });
}

void frmCheck::applyTexts() {
    const Language& lang = main_.language();
    setWindowTitle(lang.GetLangString(LangText::CheckCaption));
    const std::int32_t columns[] = {LangText::CheckColumnSeverity, LangText::CheckColumnFile,
                                    LangText::CheckColumnPlace, LangText::CheckColumnProblem};
    for (int i = 0; i < 4; ++i)
        lsvFindings_->SetColumnText(i + 1, lang.GetLangString(columns[i]));
    lsvFindings_->setAccessibleName(lang.GetLangString(LangText::NameFindingList));
}

void frmCheck::Refresh() {
    applyTexts();
    loudnessJob_->Stop();
    loudness_.reset();
    MciPackageSounds sounds(main_.mci());
    const PackageCheck check = CheckPackage(main_.PackageFolder, sounds);
    findings_ = check.findings;
    measured_ = 0;
    toMeasure_ = static_cast<int>(SoundsToMeasure(check.announcements).size());
    if (toMeasure_ > 0)
        loudnessJob_->Start(check.announcements);
    fillRows();
}

bool frmCheck::MeasuringLoudness() const {
    return loudnessJob_->Running();
}

void frmCheck::fillRows() {
    const Language& lang = main_.language();
    lsvFindings_->ClearItems();
    for (const Finding& f : std::as_const(findings_)) {
        ReportListItem* row = lsvFindings_->AddItem(lang.GetLangString(severityText(f.severity)));
        row->SetSubItems(1, f.file);
        row->SetSubItems(2, findingPlace(f));
        row->SetSubItems(3,
                         lang.GetLangString(LangText::CheckFirstFinding + static_cast<int>(f.kind),
                                            detailIn(lang, f)));
        row->SetTag(f.key);
    }
    showSummary();
}

void frmCheck::showSummary() {
    const Language& lang = main_.language();
    QStringList lines;
    if (findings_.isEmpty() && !loudnessJob_->Running())
        lines << lang.GetLangString(LangText::CheckClean);
    if (loudnessJob_->Running())
        lines << lang.GetLangString(LangText::CheckMeasuringLoudness, QString::number(measured_),
                                    QString::number(toMeasure_));
    else if (loudness_ && loudness_->medianLufs)
        lines << lang.GetLangString(LangText::CheckLoudnessSummary,
                                    LoudnessFigure(*loudness_->medianLufs),
                                    QString::number(loudness_->announcements.size()));
    lblSummary_->setText(lines.join(u'\n'));
    lblSummary_->setVisible(!lines.isEmpty());
}

void frmCheck::lsvFindings_DblClick() {
    const ReportListItem* finding = lsvFindings_->SelectedItem();
    if (!finding || finding->Tag().isEmpty())
        return;
    ReportList* list = main_.lsvPack();
    for (int i = 1; i <= list->Count(); ++i) {
        ReportListItem* row = list->ListItems(i);
        if (row->Text() == finding->Tag()) {
            row->SetSelected(true);
            list->scrollToItem(row);
            main_.activateWindow();
            return;
        }
    }
}

} // namespace tavik
