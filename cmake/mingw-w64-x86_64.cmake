# Cross build for 64-bit Windows with Debian's MinGW-w64 (posix threads, which Qt needs for std::thread).
# TAVIK_WIN_PREFIX (cache variable or environment, a list) names the folders the cross-built
# libraries are installed in.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(TAVIK_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${TAVIK_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TAVIK_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${TAVIK_MINGW_TRIPLE}-windres)
set(CMAKE_AR ${TAVIK_MINGW_TRIPLE}-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB ${TAVIK_MINGW_TRIPLE}-gcc-ranlib-posix CACHE FILEPATH "")

if(NOT TAVIK_WIN_PREFIX AND DEFINED ENV{TAVIK_WIN_PREFIX})
    string(REPLACE ":" ";" TAVIK_WIN_PREFIX "$ENV{TAVIK_WIN_PREFIX}")
endif()
# Try-compile projects run this file again and need the prefix too.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TAVIK_WIN_PREFIX)

set(CMAKE_FIND_ROOT_PATH /usr/${TAVIK_MINGW_TRIPLE} ${TAVIK_WIN_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# pkg-config must see the cross-built libraries only, never the host's.
if(TAVIK_WIN_PREFIX)
    list(TRANSFORM TAVIK_WIN_PREFIX APPEND /lib/pkgconfig OUTPUT_VARIABLE tavik_pkgconfig_dirs)
    string(REPLACE ";" ":" tavik_pkgconfig_dirs "${tavik_pkgconfig_dirs}")
    set(ENV{PKG_CONFIG_LIBDIR} "${tavik_pkgconfig_dirs}")
    set(ENV{PKG_CONFIG_PATH} "")
    set(ENV{PKG_CONFIG_SYSROOT_DIR} "")
endif()
