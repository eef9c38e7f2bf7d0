list(APPEND TAVIK_CORE_SOURCES
    audio/emulatorbackend.cpp
    audio/mcicommand.cpp
    audio/mciemulator.cpp
    audio/mixer.cpp
    audio/modmci.cpp
    audio/qtsoundoutput.cpp
    audio/recordingbackend.cpp
    audio/sequenceplayer.cpp
    audio/soundfile.cpp
    audio/systembackend.cpp
)
