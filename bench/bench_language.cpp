// Times the language routines on the delivered German file: labelling the service editor's
// largest set of controls, and looking up message texts. Every look-up reads the file, so
// these figures are file reads. Prints its figures; run by hand from the build folder.
#include "settings/applylanguage.h"
#include "settings/langtexts.h"
#include "settings/language.h"
#include "settings/windowtexts.h"

#include "benchutil.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <vector>

using namespace tavik;
using tavik::bench::median;
using tavik::bench::timeMs;

namespace {

void report(const char* what, int runs, std::vector<double> times, double targetMs) {
    const double m = median(times);
    std::printf("%-48s median %8.3f ms  max %8.3f ms  (%d runs)%s\n", what, m,
                *std::max_element(times.begin(), times.end()), runs,
                m < targetMs ? "  target met" : "  TARGET MISSED");
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    Language lang;
    lang.LanguageFile = LanguageFolder() + "Deutsch.lng";
    const int runs = 25;

    // The service editor: its captioned controls plus as many text boxes that are skipped.
    const WindowTexts* dienst = nullptr;
    for (const WindowTexts& w : LocalisedWindows())
        if (QString::fromLatin1(w.window) == "frmDienst")
            dienst = &w;
    QWidget form;
    for (const char* name : dienst->controls) {
        QWidget* w = QString::fromLatin1(name).startsWith("lbl")
                         ? static_cast<QWidget*>(new QLabel(&form))
                         : new QPushButton(&form);
        w->setObjectName(QString::fromLatin1(name));
        auto* box = new QLineEdit(&form);
        box->setObjectName(QStringLiteral("txtBox%1").arg(name));
    }
    std::vector<double> apply;
    for (int r = 0; r < runs; ++r)
        apply.push_back(timeMs([&] { ApplyLanguage(&form, "frmDienst", lang.LanguageFile); }));
    std::printf("frmDienst: %zu captioned controls, %zu skipped text boxes\n",
                dienst->controls.size(), dienst->controls.size());
    report("label the service editor (target < 50 ms)", runs, apply, 50.0);

    std::vector<double> texts;
    for (int r = 0; r < runs; ++r)
        texts.push_back(timeMs([&] {
                            for (const LangTextUse& use : UsedLangTexts())
                                (void)lang.GetLangString(use.number, "0007", "Titel", "", "", "");
                        }) /
                        static_cast<double>(UsedLangTexts().size()));
    report("one message text (target < 1 ms)", runs, texts, 1.0);
    return 0;
}
