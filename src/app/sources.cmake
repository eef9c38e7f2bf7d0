list(APPEND TAVIK_UI_SOURCES
    app/tavikapplication.cpp
)
