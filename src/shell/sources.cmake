list(APPEND TAVIK_CORE_SOURCES
    shell/fileversion.cpp
    shell/productinfo.cpp
)
list(APPEND TAVIK_UI_SOURCES
    shell/clicklabel.cpp
    shell/frmabout.cpp
    shell/frmsplash.cpp
)
