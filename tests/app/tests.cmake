list(APPEND TAVIK_CORE_TESTS
    app/install_test.cpp
    app/setasidefiles_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    app/closeduringplay_test.cpp
    app/measuredlength_test.cpp
    app/frmmain_load_test.cpp
    app/frmmain_sortsave_test.cpp
    app/frmmain_sortheader_test.cpp
    app/frmmain_keys_test.cpp
    app/frmmain_badinput_test.cpp
    app/frmmain_undo_test.cpp
    app/frmmain_randomorder_test.cpp
    app/frmcheck_test.cpp
    app/frmmain_test.cpp
    app/frmstatus_test.cpp
    app/mainwindow_writes_test.cpp
    app/tavikapplication_test.cpp
    app/outsidechanges_test.cpp
    app/longsetting_test.cpp
    app/offered_formats_editor_test.cpp
    app/readable_rows_test.cpp
    app/packagedetails_undo_test.cpp
    app/listfilter_test.cpp
    app/loudness_window_test.cpp
    app/readme_test.cpp
)
