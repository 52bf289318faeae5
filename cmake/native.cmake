# The arithmetic on the machine that builds, with sanitizers, and its tests.
option(QUORVEX_FUZZ "Build the fuzzers (with clang): tools/fuzz" OFF)
set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
if(QUORVEX_FUZZ)
  list(APPEND sanitizers -fsanitize=fuzzer-no-link)
endif()
target_compile_options(quorvex_arithmetic PUBLIC ${sanitizers})
target_link_options(quorvex_arithmetic PUBLIC ${sanitizers})

include(cmake/native_dvd.cmake)
add_subdirectory(tests/unit)
add_subdirectory(tests/fuzz)
add_subdirectory(tools/lint)
