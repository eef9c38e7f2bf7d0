# Rules of the package dialogs that need no window: folder names, description files and the
# highlight colours; the import's format filter, browsing lists and copy loop; the package scan.
list(APPEND TAVIK_CORE_SOURCES
    dialogs/announcementcolors.cpp
    dialogs/filebrowsing.cpp
    dialogs/importformats.cpp
    dialogs/importrefusal.cpp
    dialogs/newpackage.cpp
    dialogs/packagescan.cpp
    dialogs/soundimport.cpp
)
list(APPEND TAVIK_UI_SOURCES
    dialogs/browselists.cpp
    dialogs/frmfile.cpp
    dialogs/frmnew.cpp
    dialogs/frmopen.cpp
    dialogs/frmsetting.cpp
    dialogs/packagecommands.cpp
    dialogs/sounddrop.cpp
)
