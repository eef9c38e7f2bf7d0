list(APPEND TAVIK_CORE_SOURCES
    util/apppath.cpp
    util/bytereader.cpp
    util/conversions.cpp
    util/cp1252.cpp
    util/fileops.cpp
    util/modrandom.cpp
    util/runtimeerror.cpp
    util/tickcount.cpp
    util/variant.cpp
    util/vbstrings.cpp
)
