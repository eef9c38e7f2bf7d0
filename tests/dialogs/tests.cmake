list(APPEND TAVIK_CORE_TESTS
    dialogs/filebrowsing_test.cpp
    dialogs/importformats_test.cpp
    dialogs/packagescan_test.cpp
    dialogs/soundimport_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    dialogs/frmfile_test.cpp
    dialogs/frmopen_test.cpp
    dialogs/sounddrop_test.cpp
)
