# Rules of the package dialogs that need no window: folder names, description files and the
# highlight colours.
list(APPEND TAVIK_CORE_SOURCES
    dialogs/announcementcolors.cpp
    dialogs/newpackage.cpp
)
list(APPEND TAVIK_UI_SOURCES
    dialogs/frmnew.cpp
    dialogs/frmsetting.cpp
)
