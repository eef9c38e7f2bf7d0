list(APPEND TAVIK_CORE_TESTS
    app/install_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    app/tavikapplication_test.cpp
)
