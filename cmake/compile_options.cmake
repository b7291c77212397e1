# How every target is compiled: the standard, the warnings, and arithmetic that gives the same bits on
# every build.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_SCAN_FOR_MODULES OFF)

add_compile_options(-Wall -Wextra -Wconversion -Werror)
# A fused multiply-add or x87 excess precision would change the last bit from machine to machine.
add_compile_options(-ffp-contract=off)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Where it makes vectors of neighbouring statements, g++ 12 drops the narrowing of a double to float
  # between two of them, so that a stored value keeps bits that no float has.
  add_compile_options(-fno-tree-slp-vectorize)
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  add_compile_options(-msse2 -mfpmath=sse)
endif()

if(SORVANIX_SANITIZE)
  add_compile_options(-fsanitize=${SORVANIX_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${SORVANIX_SANITIZE})
  if(SORVANIX_SANITIZE MATCHES undefined)
    add_compile_options(-fsanitize=float-cast-overflow)
  endif()
endif()

if(SORVANIX_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Faster builds where the tools are there; nothing depends on them.
find_program(SORVANIX_CCACHE_PROGRAM ccache)
if(SORVANIX_CCACHE_PROGRAM)
  # It takes what uses precompiled headers only when told that they define nothing of the moment.
  set(ccache ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
    ${SORVANIX_CCACHE_PROGRAM})
  set(CMAKE_C_COMPILER_LAUNCHER ${ccache})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ccache})
  add_compile_options($<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fpch-preprocess>)
endif()
