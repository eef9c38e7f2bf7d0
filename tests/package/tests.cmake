list(APPEND TAVIK_CORE_TESTS
    package/announcementrecord_test.cpp
    package/packageannouncements_test.cpp
    package/packagecheck_sounds_test.cpp
    package/findingdetail_test.cpp
    package/loudnesscheck_test.cpp
    package/clszeldb_test.cpp
    package/clszeldb_lookup_test.cpp
    package/clszeldb_keyopen_test.cpp
    package/demopackage_test.cpp
    package/zeldb_hostile_test.cpp
    package/jsontextwriter_test.cpp
    package/packagefolder_test.cpp
    package/packagewrites_test.cpp
    package/packagetext_test.cpp
    package/changingfile_test.cpp
    ${PROJECT_SOURCE_DIR}/fuzz/package_index_input.cpp
)
