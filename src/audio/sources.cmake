list(APPEND TAVIK_CORE_SOURCES audio / mcicommand.cpp audio / mciemulator.cpp audio / soundfile.cpp)
