list(APPEND TAVIK_CORE_TESTS
    util/conversions_test.cpp
    util/cp1252_test.cpp
    util/jsontree_test.cpp
    util/cp1252guard_test.cpp
    util/checkedwrite_test.cpp
    util/fileops_test.cpp
    util/filenamerules_test.cpp
    util/pacer_test.cpp
    util/sortvalue_test.cpp
    util/placement_test.cpp
    util/numberinput_test.cpp
    util/fulldisk_test.cpp
    util/vbstrings_test.cpp
    util/searchfold_test.cpp
)
# The report list, its row routines and the push button.
list(APPEND TAVIK_WIDGET_TESTS
    util/listrows_test.cpp
    util/reportlist_test.cpp
    util/reportlistaccess_test.cpp
    util/zelcmd_test.cpp
)
