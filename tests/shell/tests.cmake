list(APPEND TAVIK_CORE_TESTS
    shell/fileversion_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    shell/shellwindows_test.cpp
)
