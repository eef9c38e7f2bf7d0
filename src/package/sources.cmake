list(APPEND TAVIK_CORE_SOURCES
    package/packagecheck.cpp
    package/packageannouncements.cpp
    package/packagefinding.cpp
    package/announcementrecord.cpp
    package/clszeldb.cpp
    package/packagefolder.cpp
    package/packagedisk.cpp
    package/packagewatch.cpp
    package/packagesettings.cpp
    package/keysettings.cpp
    package/packagetext.cpp
    package/zeldbformat.cpp
    package/jsontextwriter.cpp
    package/zeldbjson.cpp
    package/zeldbfromjson.cpp
)
