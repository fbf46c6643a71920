# 32-bit Windows with the win32 thread variant: the POSIX variant's run-time library keeps a thread-local
# slot for each time a library is loaded, and a process ends up without any.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)

set(prefix i686-w64-mingw32)
set(CMAKE_C_COMPILER ${prefix}-gcc-win32)
set(CMAKE_CXX_COMPILER ${prefix}-g++-win32)
set(CMAKE_RC_COMPILER ${prefix}-windres)
set(CMAKE_AR ${prefix}-gcc-ar-win32)
set(CMAKE_RANLIB ${prefix}-gcc-ranlib-win32)

set(CMAKE_FIND_ROOT_PATH /usr/${prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
