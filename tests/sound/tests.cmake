# Sound through the real output, recorded from a private sound server's null sink. One CTest
# test: the wrapper starts and stops the server around the whole binary.
add_executable(tavik_sound_tests sound/sound_main.cpp sound/monitorrecording.cpp
    sound/realoutput_test.cpp)
# On Windows the editor plays through the system's MCI unless the project's engine is chosen:
# both are heard. The recorder is the host's, started the way each system can.
if(WIN32)
    target_sources(tavik_sound_tests PRIVATE sound/realoutput_winmm_test.cpp
        sound/monitorrecording_win.cpp sound/outputtolerance_win.cpp)
else()
    target_sources(tavik_sound_tests PRIVATE sound/monitorrecording_unix.cpp
        sound/outputtolerance_unix.cpp)
endif()
target_link_libraries(tavik_sound_tests PRIVATE taviktestsupport tavikui)
tavik_test_target(tavik_sound_tests)
add_test(NAME RealSoundOutput
         COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/sound/with_pulseaudio.sh
                 ${TAVIK_TEST_EMULATOR} $<TARGET_FILE:tavik_sound_tests>)
# The sound system's plug-in (the PulseAudio PCM of ALSA) is unloaded before the leak check, so
# its allocations are told apart only by the ALSA frames below them: unwind those fully.
set_tests_properties(RealSoundOutput PROPERTIES TIMEOUT ${TAVIK_TEST_TIMEOUT} RUN_SERIAL TRUE
    ENVIRONMENT "LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_SOURCE_DIR}/lsan-system.supp;ASAN_OPTIONS=detect_leaks=1:fast_unwind_on_malloc=0")
