list(APPEND TAVIK_CORE_TESTS
    cli/tool_test.cpp
    cli/measure_command_test.cpp
    cli/ini_command_test.cpp
    cli/check_command_test.cpp
    cli/check_loudness_test.cpp
    cli/write_command_test.cpp
    cli/new_import_command_test.cpp
    cli/devicenames_test.cpp
    cli/unheld_text_tool_test.cpp
    cli/toolwrites_test.cpp
    cli/render_command_test.cpp
    cli/tool_help_test.cpp
    cli/tool_usability_test.cpp
)
# Byte-named files and concurrent shell loops need a POSIX system and its shell.
if(UNIX)
    list(APPEND TAVIK_CORE_TESTS cli/concurrent_writers_test.cpp cli/nativenames_test.cpp
        cli/documented_examples_test.cpp)
endif()
