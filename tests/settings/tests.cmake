# Tests of the settings module.
list(APPEND TAVIK_CORE_TESTS
    settings/formatsfile_test.cpp
    settings/formatsini_test.cpp
    settings/language_hostile_test.cpp
    settings/language_test.cpp
    settings/lastpackage_test.cpp
    settings/languagefiles_test.cpp
    settings/modini_test.cpp
    settings/profilerules_test.cpp
    settings/profilewrite_test.cpp
    settings/qttranslation_test.cpp
    settings/runtimeerrortext_test.cpp
)
list(APPEND TAVIK_WIDGET_TESTS
    settings/applylanguage_test.cpp
    settings/everywindow_test.cpp
    settings/everymessage_test.cpp
    settings/frmlanguage_test.cpp
    settings/frmoptions_test.cpp
    settings/languagechange_test.cpp
    settings/languagestartup_test.cpp
)
