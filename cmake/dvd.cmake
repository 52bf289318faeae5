# The platform layer's player of DVD-Video discs. libdvdnav and libdvdread: tools/deps/build-deps.
add_library(dvdnav INTERFACE)
target_include_directories(dvdnav SYSTEM INTERFACE ${deps_dir}/include)
# As files: what is linked with them is linked again when they are mended.
target_link_libraries(dvdnav INTERFACE ${deps_dir}/lib/libdvdnav.a ${deps_dir}/lib/libdvdread.a)

add_library(
  qvdvd MODULE
  platform/dvd/closed_captions.cpp
  platform/dvd/disc_in_drive.cpp
  platform/dvd/disc_player.cpp
  platform/dvd/disc_wishes.cpp
  platform/dvd/dvd_control.cpp
  platform/dvd/dvd_graph_builder.cpp
  platform/dvd/dvd_info.cpp
  platform/dvd/dvd_source.cpp
  platform/dvd/dvd_window.cpp
  platform/dvd/languages.cpp
  platform/dvd/picture_worker.cpp
  platform/dvd/place_board.cpp
  platform/dvd/qvdvd.cpp
  platform/dvd/qvdvd.def
  platform/dvd/sound_worker.cpp
  platform/dvd/stream_parser.cpp)
set_target_properties(qvdvd PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
target_link_libraries(qvdvd PRIVATE quorvex_filters quorvex_navigator quorvex_drive gdi32)
