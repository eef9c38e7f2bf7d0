list(APPEND TAVIK_WIDGET_TESTS
    app/tavikapplication_test.cpp
)
