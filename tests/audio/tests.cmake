list(APPEND TAVIK_CORE_TESTS
    audio/mcicommand_test.cpp
    audio/emulatorpaths_test.cpp
    audio/mixer_test.cpp
    audio/sentencerender_test.cpp
    audio/soundreader_test.cpp
    audio/mciemulator_test.cpp
    audio/modmci_test.cpp
    audio/sequenceplayer_test.cpp
    audio/offered_formats_test.cpp
    audio/soundfile_test.cpp
    audio/loudness_test.cpp
)
