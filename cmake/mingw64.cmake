# Builds for 64-bit Windows with Debian's MinGW-w64 compilers.
set(SORVANIX_MINGW_TARGET x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
