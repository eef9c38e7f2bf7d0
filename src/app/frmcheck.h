#pragma once

#include "service/servicecheck.h"

#include <QWidget>

class QLabel;

namespace tavik {

class LoudnessJob;
class ReportList;
class frmMain;

// The findings of a package check, one row each: severity, file, where in it, the problem.
// It belongs to the main window and stays beside it; a double-click on a finding that names
// an announcement selects that announcement in the main window's list.
class frmCheck : public QWidget {
    Q_OBJECT
public:
    explicit frmCheck(frmMain& main);

    ReportList* lsvFindings() const { return lsvFindings_; }
    QLabel* lblSummary() const { return lblSummary_; }
    const QList<Finding>& findings() const { return findings_; }

    // Checks the main window's current package again and lists what it finds; the sounds'
    // loudness is measured after that, away from the window, and its findings join the list.
    void Refresh();
    // Whether loudness is still being measured.
    bool MeasuringLoudness() const;

public Q_SLOTS:
    void lsvFindings_DblClick();

private:
    void applyTexts();
    void fillRows();
    void showSummary();

    frmMain& main_;
    ReportList* lsvFindings_;
    QLabel* lblSummary_;
    QList<Finding> findings_;
    LoudnessJob* loudnessJob_;
    std::optional<LoudnessCheck> loudness_;
    int measured_ = 0;
    int toMeasure_ = 0;
};

} // namespace tavik
