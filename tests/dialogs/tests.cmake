# Folder names, description files and highlight colours of the package dialogs, and the new
# package and properties dialogs themselves.
list(APPEND TAVIK_CORE_TESTS
    dialogs/announcementcolors_test.cpp
    dialogs/newpackage_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    dialogs/frmnew_test.cpp
    dialogs/frmsetting_test.cpp
    dialogs/mainwindowdialogs_test.cpp
)
