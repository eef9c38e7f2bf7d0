list(APPEND TAVIK_CORE_SOURCES
    service/packageannouncements.cpp
    service/servicefile.cpp
    service/servicefiles.cpp
    service/servicejson.cpp
    service/servicesentences.cpp
)
