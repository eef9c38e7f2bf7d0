list(APPEND TAVIK_CORE_SOURCES
    cli/tool.cpp
    cli/commandhelp.cpp
    cli/dumpcommand.cpp
    cli/setcommand.cpp
    cli/measurecommand.cpp
    cli/inicommand.cpp
    cli/playcommand.cpp
    cli/checkcommand.cpp
    cli/writecommand.cpp
    cli/newcommand.cpp
    cli/importcommand.cpp
    cli/options.cpp
    cli/lossytext.cpp
    cli/rendercommand.cpp
    cli/toolannouncements.cpp
)
# How the tool's standard streams carry bytes on each system.
if(WIN32)
    list(APPEND TAVIK_CORE_SOURCES cli/standardstreams_win.cpp)
else()
    list(APPEND TAVIK_CORE_SOURCES cli/standardstreams_unix.cpp)
endif()
