# Tests of the event log and the debug viewer.
list(APPEND TAVIK_CORE_TESTS
    log/highlightlogic_test.cpp
    log/logsettings_test.cpp
    log/rtfdocument_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    log/eventlog_test.cpp
    log/frmdebug_test.cpp
    log/richtextbox_test.cpp
)
