list(APPEND TAVIK_UI_SOURCES
    app/frmstatus.cpp
    app/tavikapplication.cpp
)
