# The DVD-Video discs of the tests.
set(disc_dir ${CMAKE_BINARY_DIR}/tests/discs)
set(make_discs ${CMAKE_SOURCE_DIR}/tests/support/make_discs.py)
file(GLOB disc_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/discs/*.py)
add_custom_command(
  OUTPUT ${disc_dir}/made
  COMMAND /usr/bin/python3 -B ${make_discs} ${disc_dir}
  COMMAND ${CMAKE_COMMAND} -E touch ${disc_dir}/made
  DEPENDS ${make_discs} ${disc_sources}
  COMMENT "Making the tests' discs")
add_custom_target(test_discs DEPENDS ${disc_dir}/made)
add_dependencies(win_tests test_discs)
target_compile_definitions(win_tests PRIVATE QUORVEX_TEST_DISCS="Z:${disc_dir}")
