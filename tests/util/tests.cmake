list(APPEND TAVIK_CORE_TESTS
    util/conversions_test.cpp
    util/cp1252_test.cpp
    util/fileops_test.cpp
    util/vbstrings_test.cpp
)
