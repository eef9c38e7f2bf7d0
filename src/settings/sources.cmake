# The settings module: profile files, language files and their dialogs.
list(APPEND TAVIK_CORE_SOURCES
    settings/formatsfile.cpp
    settings/langtexts.cpp
    settings/language.cpp
    settings/lastpackage.cpp
    settings/modini.cpp
    settings/profilefile.cpp
    settings/profiletext.cpp
    settings/useformat.cpp
    settings/qttranslation.cpp
    settings/runtimeerrortext.cpp
    settings/windowtexts.cpp
)
list(APPEND TAVIK_UI_SOURCES
    settings/applylanguage.cpp
    settings/followlanguage.cpp
    settings/frmlanguage.cpp
    settings/frmoptions.cpp
)
