# Folder names, description files and highlight colours of the package dialogs, the import
# and open logic, and the dialogs themselves.
list(APPEND TAVIK_CORE_TESTS
    dialogs/announcementcolors_test.cpp
    dialogs/filebrowsing_test.cpp
    dialogs/importformats_test.cpp
    dialogs/newpackage_test.cpp
    dialogs/packagescan_test.cpp
    dialogs/soundimport_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    dialogs/dialogkeys_test.cpp
    dialogs/frmfile_test.cpp
    dialogs/frmnew_test.cpp
    dialogs/codepage_dialogs_test.cpp
    dialogs/newkey_clean_test.cpp
    dialogs/frmopen_test.cpp
    dialogs/frmsetting_test.cpp
    dialogs/import_writes_test.cpp
    dialogs/mainwindowdialogs_test.cpp
    dialogs/package_endtoend_test.cpp
    dialogs/package_script_test.cpp
    dialogs/packageinfo_writes_test.cpp
    dialogs/sounddrop_test.cpp
)
