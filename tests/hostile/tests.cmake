# Packages and service files as they come from other machines, through the core, the tool
# and the real windows.
list(APPEND TAVIK_CORE_TESTS
    hostile/hostile_keys_test.cpp
    hostile/hostile_tool_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    hostile/hostile_mainwindow_test.cpp
    hostile/hostile_serviceeditor_test.cpp
)
# The tool runs on an installation made from the delivered formats file.
set_source_files_properties(hostile/hostile_tool_test.cpp PROPERTIES
    COMPILE_DEFINITIONS TAVIK_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
