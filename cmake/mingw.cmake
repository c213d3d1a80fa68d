# What both MinGW-w64 toolchains share. The file that includes this one sets `triple`.
set(CMAKE_SYSTEM_NAME Windows)
# Debian has a C++ runtime with the system's threads, and names the one with POSIX threads, which has them all.
find_program(TORNBY_CXX NAMES ${triple}-g++-posix ${triple}-g++)
find_program(TORNBY_CC NAMES ${triple}-gcc-posix ${triple}-gcc)
if(NOT TORNBY_CXX OR NOT TORNBY_CC)
  message(FATAL_ERROR "${triple}-g++ is missing. Install MinGW-w64: tools/setup build, or Debian's packages "
    "g++-mingw-w64-i686-posix and g++-mingw-w64-x86-64-posix.")
endif()
set(CMAKE_CXX_COMPILER ${TORNBY_CXX})
set(CMAKE_C_COMPILER ${TORNBY_CC})
set(CMAKE_RC_COMPILER ${triple}-windres)
set(TORNBY_WIDL ${triple}-widl)
set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
