#include "app/activewindow.h"
#include "app/frmmain.h"
#include "app/tavikapplication.h"
#include "audio/modmci.h"
#include "audio/systembackend.h"
#include "log/eventlog.h"
#include "settings/language.h"
#include "settings/runtimeerrortext.h"
#include "util/apppath.h"
#include "util/runtimeerror.h"

// The editor's start object: the main window, after its start-up has run.
int main(int argc, char** argv) {
    tavik::TavikApplication app(argc, argv);
    tavik::Language language;
    // Runtime errors speak the editor's language, whichever is chosen at the time.
    app.setErrorText([&language](const tavik::RuntimeError& error) {
        return tavik::RuntimeErrorMessage(language, error);
    });
    tavik::EventLog eventLog(tavik::AppPath(), &language);
    const std::unique_ptr<tavik::MciBackend> backend = tavik::createSystemMciBackend();
    tavik::modMCI mci(
        *backend, [&eventLog](const QString& line) { eventLog.WriteLog(line); },
        tavik::ActiveWindowHandle);
    tavik::frmMain window(language, mci, eventLog);
    // Start-up runs before the event loop: a runtime error there is shown by the same handler
    // as one inside it, and the editor goes on with what was set up.
    bool started = true;
    tavik::RunHandler([&] { started = window.FormLoad(); });
    if (!started)
        return 0;
    window.show();
    const int code = app.exec();
    // A sound still playing is heard to its end before the program goes.
    backend->drain();
    return code;
}
