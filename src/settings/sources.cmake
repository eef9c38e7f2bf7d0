# The settings module: profile files, language files and their dialogs.
list(APPEND TAVIK_CORE_SOURCES
    settings/language.cpp
    settings/langtexts.cpp
    settings/windowtexts.cpp
)
list(APPEND TAVIK_UI_SOURCES
    settings/applylanguage.cpp
)
# Interim profile-file reader until the settings module's own lands; remove with it.
list(APPEND TAVIK_CORE_SOURCES settings/modini_interim.cpp)
