list(APPEND TAVIK_CORE_SOURCES
    dialogs/filebrowsing.cpp
    dialogs/importformats.cpp
    dialogs/packagescan.cpp
    dialogs/soundimport.cpp
)
list(APPEND TAVIK_UI_SOURCES
    dialogs/browselists.cpp
    dialogs/frmfile.cpp
    dialogs/frmopen.cpp
    dialogs/packagecommands.cpp
    dialogs/sounddrop.cpp
)
