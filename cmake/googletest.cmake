# GoogleTest from Debian's sources, without this project's warnings and lint.
include(GoogleTest)
block()
  set(CMAKE_CXX_CLANG_TIDY "")
  set(INSTALL_GTEST OFF)
  add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
endblock()
