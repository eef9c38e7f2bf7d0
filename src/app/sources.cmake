list(APPEND TAVIK_UI_SOURCES
    app/fadeineffect.cpp
    app/frmcheck.cpp
    app/frmmain.cpp
    app/frmmain_check.cpp
    app/frmmain_dialogs.cpp
    app/frmmain_edit.cpp
    app/frmmain_keys.cpp
    app/frmmain_filter.cpp
    app/frmmain_package.cpp
    app/frmmain_panel.cpp
    app/frmmain_sort.cpp
    app/readme.cpp
    app/frmmain_watch.cpp
    app/frmstatus.cpp
    app/listcommands.cpp
    app/listfilterbar.cpp
    app/loadinputguard.cpp
    app/loudnessjob.cpp
    app/frmmain_loudness.cpp
    app/tavikapplication.cpp
    app/undomenu.cpp
)
list(APPEND TAVIK_CORE_SOURCES
    app/setasidefiles.cpp
)
# The window handle MCI commands carry: the system's on Windows.
if(WIN32)
    list(APPEND TAVIK_UI_SOURCES app/activewindow_win.cpp)
else()
    list(APPEND TAVIK_UI_SOURCES app/activewindow_unix.cpp)
endif()
