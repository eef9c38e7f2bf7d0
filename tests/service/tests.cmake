list(APPEND TAVIK_CORE_TESTS
    service/serviceeditorrules_test.cpp
    service/servicefile_test.cpp
    service/servicefilewrite_test.cpp
    service/servicefiles_test.cpp
    service/servicesentences_test.cpp
    service/service_hostile_test.cpp
    service/service_tool_test.cpp
    ${PROJECT_SOURCE_DIR}/fuzz/service_input.cpp
)
# The service editor window over a main window with a scratch package loaded.
list(APPEND TAVIK_WIDGET_TESTS
    service/frmdienst_test.cpp
    service/frmdienst_sentence_test.cpp
    service/frmdienst_files_test.cpp
    service/frmdienst_texts_test.cpp
    service/service_uses_test.cpp
    service/frmdienst_writes_test.cpp
    service/dienst_endtoend_test.cpp
    service/frmdienst_export_test.cpp
    service/frmdienst_undo_test.cpp
    service/frmdienst_watch_test.cpp
    service/sentencetimeline_test.cpp
)
