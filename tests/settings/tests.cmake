# Tests of the settings module.
list(APPEND TAVIK_CORE_TESTS
    settings/modini_test.cpp
    settings/profilerules_test.cpp
    settings/formatsini_test.cpp
)
