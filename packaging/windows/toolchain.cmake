# Cross-builds Windows x64 programs on Debian with its MinGW-w64 compilers (posix threads: std::thread works).
# QUILLORY_WINDOWS_QT names the prefix of a Qt built for Windows; without it only compiler and system are set.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(mingw x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${mingw}-gcc-posix)
set(CMAKE_CXX_COMPILER ${mingw}-g++-posix)
set(CMAKE_RC_COMPILER ${mingw}-windres)

# try_compile() starts over with this file: it has to see the prefix as well.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QUILLORY_WINDOWS_QT)

set(CMAKE_FIND_ROOT_PATH /usr/${mingw})
if(QUILLORY_WINDOWS_QT)
    list(APPEND CMAKE_FIND_ROOT_PATH "${QUILLORY_WINDOWS_QT}")
    list(APPEND CMAKE_PREFIX_PATH "${QUILLORY_WINDOWS_QT}")
    # moc, uic and rcc run here: they are the machine's own, of the same Qt version.
    set(QT_HOST_PATH /usr CACHE PATH "Prefix of the Qt that this machine runs")
    set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "Its CMake packages")
endif()

# Programs are the machine's; headers, libraries and packages are the target's, never the machine's.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} /usr/${mingw}/lib/pkgconfig)
