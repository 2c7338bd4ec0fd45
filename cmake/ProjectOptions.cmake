# One interface target carries the warning list and the sanitizer switches, and every
# target of the project links it, so no target can quietly miss them.
add_library(vendrako_options INTERFACE)

target_compile_options(vendrako_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion)
# GCC 12 reports false -Wrestrict overlaps inside std::string at -O2 (GCC bug 105329).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(vendrako_options INTERFACE -Wno-restrict)
endif()
if(VENDRAKO_WERROR)
  target_compile_options(vendrako_options INTERFACE -Werror)
endif()

if(VENDRAKO_SANITIZE)
  target_compile_options(vendrako_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(vendrako_options INTERFACE -fsanitize=address,undefined)
endif()

if(VENDRAKO_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "The fuzz targets need clang (CXX=clang++).")
  endif()
  target_compile_options(vendrako_options INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  target_link_options(vendrako_options INTERFACE -fsanitize=address,undefined)
endif()

# An optimised build is optimised for size. The executable is read into memory whole at every
# start, and this program spends its time waiting for the clock and the user, not computing:
# at -O3 it is 1.1 MB of code, at -Os half of that, and the benchmarks keep their targets.
target_compile_options(vendrako_options INTERFACE $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-Os>)
