#include "settings/windowtexts.h"

namespace tavik {

namespace {

// cmdUp, cmdDown, cmdFUp and cmdFDown of the main window, and the picture buttons of the
// service editor, carry only a tool tip: their value starts with "|".
constexpr const char* kMain[] = {
    "cmdNew",    "cmdOpen",     "cmdSave",   "cmdAdd",      "cmdRemove", "cmdEdit",   "cmdPlay",
    "cmdUp",     "cmdDown",     "cmdFUp",    "cmdFDown",    "cmdSort",   "cmdExpand", "cmdUnexpand",
    "cmdDienst", "cmdCompress", "cmdDelete", "cmdLanguage", "cmdDebug",  "cmdHelp",   "cmdInfo",
    "cmdExit",   "mnuSort",     "mnuIndex",  "mnuTitel",    "mnuFormat", "mnuLenght", "mnuHlp",
    "mnuHP",     "mnuSupport",  "mnuReadme",
};

constexpr const char* kDienst[] = {
    // page 0, service properties
    "lblTitle", "lblAutor", "lblComment", "lblID", "lblIDHint", "cmdSv", "cmdEsc",
    // page 1, the service's sentences
    "lblText", "cmdAdd", "cmdRem", "cmdEdit", "cmdUp", "cmdDown", "cmdPlay", "cmdTausch",
    // page 2, one sentence
    "fraSource", "fraTarget", "cmdHinzu", "cmdEntf", "cmdAuf", "cmdAb", "cmdSearch", "cmdAbsp",
    "cmdSave", "cmdCancel",
    // page 3, open a service
    "lblInfoAutor", "lblInfoComment", "cmdOpen", "cmdAbbr", "cmdKill", "cmdRefresh",
    // menus
    "mnuNew", "mnuOpen", "mnuSave", "mnuClose"};

constexpr const char* kFile[] = {"fraSelect",  "fraImport", "cmdAdd",   "cmdDel", "cmdClear",
                                 "cmdRefresh", "cmdPlay",   "cmdColor", "cmdOK",  "cmdCancel"};

constexpr const char* kOpen[] = {"cmdOK", "cmdSearch", "cmdCancel"};

constexpr const char* kNew[] = {"fraDir", "fraInfo", "lblTitel", "lblAutor", "lblComment",
                                "lblPic", "cmdPic",  "cmdClear", "cmdOK",    "cmdCancel"};

constexpr const char* kSetting[] = {"Frame1", "Label1", "chkVisible", "chkPlace", "Label4",
                                    "Label3", "Label2", "cmdOK",      "cmdCancel"};

constexpr const char* kOptions[] = {"Frame1", "Label1", "chkMedia", "cmdOK", "cmdCancel"};

constexpr const char* kLanguage[] = {"Label1", "Label2", "Label3", "cmdOK", "cmdCancel"};

constexpr const char* kDebug[] = {"chkLogToFile"};

constexpr const char* kSplash[] = {"lblClick"};

constexpr const char* kAbout[] = {"Label2", "lblURL", "cmdOK"};

constexpr WindowTexts kWindows[] = {
    {"frmMain", kMain},       {"frmDienst", kDienst},     {"frmFile", kFile},
    {"frmOpen", kOpen},       {"frmNew", kNew},           {"frmSetting", kSetting},
    {"frmOptions", kOptions}, {"frmLanguage", kLanguage}, {"frmDebug", kDebug},
    {"frmSplash", kSplash},   {"frmAbout", kAbout},       {"frmStatus", {}},
};

} // namespace

std::span<const WindowTexts> LocalisedWindows() {
    return kWindows;
}

} // namespace tavik
