# The event log and the debug viewer.
list(APPEND TAVIK_CORE_SOURCES
    log/colortable.cpp
    log/eventyield.cpp
    log/linehighlight.cpp
    log/logsettings.cpp
    log/rtfreader.cpp
    log/rtfwriter.cpp
    log/wordmatch.cpp
)
list(APPEND TAVIK_UI_SOURCES
    log/eventlog.cpp
    log/frmdebug.cpp
    log/richtextbox.cpp
    log/rtfhighlight.cpp
)
