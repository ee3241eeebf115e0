# Cross-builds Windows x64 programs on Debian with its MinGW-w64 compilers (posix threads: std::thread works).
# QUILLORY_WINDOWS_QT is the prefix of a Qt built for Windows; without it, sets only compiler and system.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mingw x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw}-windres)

# Passes the prefix to try_compile(), which runs this file again.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUILLORY_WINDOWS_QT)

set(CMAKE_FIND_ROOT_PATH /usr/${mingw})
if(QUILLORY_WINDOWS_QT)
    list(APPEND CMAKE_FIND_ROOT_PATH "${QUILLORY_WINDOWS_QT}")
    list(APPEND CMAKE_PREFIX_PATH "${QUILLORY_WINDOWS_QT}")
    # moc, uic and rcc run on this machine. They belong to its own Qt, which has the same version.
    set(QT_HOST_PATH /usr CACHE PATH "Prefix of the Qt that this machine runs")
    set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "Its CMake packages")
endif()

# Finds programs on this machine only, and headers, libraries and packages for the target only.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} /usr/${mingw}/lib/pkgconfig)
