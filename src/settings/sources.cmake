# The settings module: profile files, language files and their dialogs.
list(APPEND TAVIK_CORE_SOURCES
    settings/modini.cpp
    settings/profilefile.cpp
    settings/profiletext.cpp
)
