# What the toolchains for Windows share. Of the two thread models of these compilers the standard
# library's threads and mutexes exist in "posix" only.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${SORVANIX_MINGW_TARGET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${SORVANIX_MINGW_TARGET}-g++-posix)
set(CMAKE_FIND_ROOT_PATH /usr/${SORVANIX_MINGW_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Everything that the compiler brings goes into the files themselves: a host need not ship it.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_MODULE_LINKER_FLAGS_INIT -static)
