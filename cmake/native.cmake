# The arithmetic on the machine that builds, with sanitizers, and its tests.
set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
target_compile_options(quorvex_arithmetic PUBLIC ${sanitizers})
target_link_options(quorvex_arithmetic PUBLIC ${sanitizers})

add_subdirectory(tests/unit)
add_subdirectory(tools/lint)
