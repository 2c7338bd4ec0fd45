# One interface target carries the warning list and the sanitizer switches, and every
# target of the project links it, so no target can quietly miss them.
add_library(vendrako_options INTERFACE)

target_compile_options(vendrako_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion)
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
