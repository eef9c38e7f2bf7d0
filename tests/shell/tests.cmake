list(APPEND TAVIK_CORE_TESTS
    shell/fileversion_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    shell/shellwindows_test.cpp
)
# The programs' own version resource, which only the Windows programs have.
if(WIN32)
    list(APPEND TAVIK_CORE_TESTS shell/ownversion_test_win.cpp)
endif()
