list(APPEND TAVIK_CORE_SOURCES
    audio/emulatorbackend.cpp
    audio/mcicommand.cpp
    audio/mciemulator.cpp
    audio/mixer.cpp
    audio/modmci.cpp
    audio/portaudiooutput.cpp
    audio/preparedsound.cpp
    audio/recordingbackend.cpp
    audio/sentencerender.cpp
    audio/sentenceschedule.cpp
    audio/sequenceplayer.cpp
    audio/soundfile.cpp
    audio/soundreader.cpp
    audio/streamdecoder.cpp
    audio/streamfeed.cpp
    audio/systembackend.cpp
)
