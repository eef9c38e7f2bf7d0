list(APPEND TAVIK_CORE_SOURCES
    audio/emulatorbackend.cpp
    audio/mcicommand.cpp
    audio/mciemulator.cpp
    audio/mcierrortext.cpp
    audio/mixer.cpp
    audio/modmci.cpp
    audio/portaudiooutput.cpp
    audio/preparedsound.cpp
    audio/recordingbackend.cpp
    audio/sentencerender.cpp
    audio/sentenceschedule.cpp
    audio/timelinelayout.cpp
    audio/waveform.cpp
    audio/loudness.cpp
    audio/loudnesscache.cpp
    audio/loudnessmeter.cpp
    audio/sequenceplayer.cpp
    audio/soundcheck.cpp
    audio/soundfile.cpp
    audio/soundreader.cpp
    audio/streamdecoder.cpp
    audio/streamfeed.cpp
)
# The system's MCI (winmm on Windows, the emulator elsewhere), its null device for the sound
# libraries' chatter, and how libsndfile is handed a file name.
if(WIN32)
    list(APPEND TAVIK_CORE_SOURCES audio/systembackend_win.cpp audio/winmmbackend.cpp
        audio/quieterrors_win.cpp audio/sndfileopen_win.cpp)
else()
    list(APPEND TAVIK_CORE_SOURCES audio/systembackend_unix.cpp audio/quieterrors_unix.cpp
        audio/sndfileopen_unix.cpp)
endif()
