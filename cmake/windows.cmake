# What the Windows build adds to the targets: the editor is a GUI program with an icon and a
# version resource, the tool a console program with a version resource; the core sends MCI to
# winmm and reads version resources through the system.
target_link_libraries(tavikcore PRIVATE winmm version)
set_target_properties(tavik-editor PROPERTIES WIN32_EXECUTABLE ON)

function(tavik_windows_resource target description)
    set(TAVIK_WINDOWS_NAME ${target})
    set(TAVIK_WINDOWS_DESCRIPTION "${description}")
    set(TAVIK_WINDOWS_ICON "${PROJECT_SOURCE_DIR}/res/windows/tavik-editor.ico")
    configure_file(${PROJECT_SOURCE_DIR}/res/windows/tavik-editor.rc.in
                   ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
    target_sources(${target} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
endfunction()

tavik_windows_resource(tavik-editor "Tavik Editor")
tavik_windows_resource(tavik "Tavik headless tool")
