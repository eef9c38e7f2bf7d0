list(APPEND TAVIK_CORE_SOURCES
    util/apppath.cpp
    util/bytereader.cpp
    util/conversions.cpp
    util/cp1252.cpp
    util/cp1252guard.cpp
    util/fileops.cpp
    util/filenamerules.cpp
    util/wholeread.cpp
    util/packagelock.cpp
    util/jsonfields.cpp
    util/jsontree.cpp
    util/modrandom.cpp
    util/pacer.cpp
    util/placement.cpp
    util/numberinput.cpp
    util/runtimeerror.cpp
    util/sortvalue.cpp
    util/searchfold.cpp
    util/tickcount.cpp
    util/variant.cpp
    util/vbstrings.cpp
)
# The per-user folder of the package locks, the short form of a path, how paths and names are
# spelled and compared, and the drives: one file for each platform.
if(WIN32)
    list(APPEND TAVIK_CORE_SOURCES util/lockfolder_win.cpp util/shortpath_win.cpp
        util/nativepath_win.cpp util/platformnames_win.cpp util/fileaccess_win.cpp)
else()
    list(APPEND TAVIK_CORE_SOURCES util/lockfolder_unix.cpp util/shortpath_unix.cpp
        util/nativepath_unix.cpp util/platformnames_unix.cpp util/fileaccess_unix.cpp)
endif()
# Report-style lists with their row routines, the editor's push button, and the message, input
# and file dialogs every window asks through.
list(APPEND TAVIK_UI_SOURCES
    util/accessiblenames.cpp
    util/codepageguard.cpp
    util/filedialog.cpp
    util/inputbox.cpp
    util/listrows.cpp
    util/modlistview.cpp
    util/msgbox.cpp
    util/savequestion.cpp
    util/windowplacement.cpp
    util/numbervalidator.cpp
    util/reportlist.cpp
    util/wincolor.cpp
    util/zelcmd.cpp
)
