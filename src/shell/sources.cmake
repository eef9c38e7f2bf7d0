list(APPEND TAVIK_CORE_SOURCES
    shell/fileversion.cpp
    shell/productinfo.cpp
)
# The version resource through the system's call on Windows, from the file's bytes elsewhere.
if(WIN32)
    list(APPEND TAVIK_CORE_SOURCES shell/fixedfileinfo_win.cpp)
else()
    list(APPEND TAVIK_CORE_SOURCES shell/fixedfileinfo_bytes.cpp)
endif()
list(APPEND TAVIK_UI_SOURCES
    shell/clicklabel.cpp
    shell/frmabout.cpp
    shell/frmsplash.cpp
)
