# libdvdread and libdvdnav for this machine, with the sanitizers: from the sources that tools/deps/build-deps fetched and patched.
enable_language(C)
set(dvd_sources ${CMAKE_SOURCE_DIR}/build/deps/source)
if(NOT EXISTS ${dvd_sources}/libdvdnav)
  message(FATAL_ERROR "run tools/deps/build-deps first")
endif()
file(WRITE ${CMAKE_BINARY_DIR}/dvd_config/config.h.new "#define UNUSED __attribute__((unused))\n#define VERSION \"6.1\"\n")
configure_file(${CMAKE_BINARY_DIR}/dvd_config/config.h.new ${CMAKE_BINARY_DIR}/dvd_config/config.h COPYONLY)

file(GLOB dvd_files CONFIGURE_DEPENDS ${dvd_sources}/libdvdread/*.c ${dvd_sources}/libdvdnav/*.c ${dvd_sources}/libdvdnav/vm/*.c)
add_library(dvdnav STATIC ${dvd_files})
target_include_directories(dvdnav PRIVATE tools/deps/library_guard ${CMAKE_BINARY_DIR}/dvd_config ${dvd_sources}/libdvdread
                                          ${dvd_sources}/libdvdnav ${dvd_sources}/libdvdnav/vm ${dvd_sources}/libdvdnav/dvdnav)
target_include_directories(dvdnav SYSTEM PUBLIC ${CMAKE_SOURCE_DIR}/build/deps/include)
target_compile_definitions(dvdnav PRIVATE HAVE_CONFIG_H abort=quorvex_library_failed)
# Its numbers are shifted and read from odd addresses everywhere; every compiler that counts takes that.
target_compile_options(dvdnav PRIVATE -w ${sanitizers} -fno-sanitize=shift,alignment)
target_link_options(dvdnav PUBLIC ${sanitizers})
# The tests let sectors be unreadable.
set_source_files_properties(${dvd_sources}/libdvdread/dvd_input.c PROPERTIES COMPILE_DEFINITIONS read=quorvex_disc_read)

# The disc that is damaged.
set(little_dir ${CMAKE_BINARY_DIR}/discs)
set(make_discs ${CMAKE_SOURCE_DIR}/tests/support/make_discs.py)
file(GLOB disc_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/support/discs/*.py)
add_custom_command(
  OUTPUT ${little_dir}/little.iso
  COMMAND /usr/bin/python3 -B ${make_discs} ${little_dir} little
  DEPENDS ${make_discs} ${disc_sources}
  COMMENT "Making the disc that the unit tests damage")
add_custom_target(little_disc DEPENDS ${little_dir}/little.iso)

add_library(disc_walk STATIC tests/fuzz/disc_walk.cpp tests/fuzz/mutable_disc.cpp)
set_target_properties(disc_walk PROPERTIES CXX_CLANG_TIDY "")
target_link_libraries(disc_walk PUBLIC quorvex_navigator)
add_dependencies(disc_walk little_disc)
