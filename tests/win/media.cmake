# The media files of the tests.
set(media_dir ${CMAKE_BINARY_DIR}/tests/media)
set(make_media ${CMAKE_SOURCE_DIR}/tests/support/make_media.py)
add_custom_command(
  OUTPUT ${media_dir}/made
  COMMAND /usr/bin/python3 ${make_media} ${media_dir}
  COMMAND ${CMAKE_COMMAND} -E touch ${media_dir}/made
  DEPENDS ${make_media}
  COMMENT "Making the tests' media files")
add_custom_target(test_media DEPENDS ${media_dir}/made)
add_dependencies(win_tests test_media qvmedia qvsound)
target_compile_definitions(win_tests PRIVATE QUORVEX_TEST_MEDIA="Z:${media_dir}" QUORVEX_BIN="Z:${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
