# The platform layer's virtual capture cards, and what qvdrive plugs them in with.
add_library(quorvex_cards STATIC platform/tv/card_table.cpp platform/tv/shared_card.cpp)
target_link_libraries(quorvex_cards PUBLIC quorvex_drive quorvex_com quorvex_pictures)

# What the tests of capture graphs use too.
add_library(quorvex_capture STATIC platform/tv/capture_type.cpp platform/tv/graph_walk.cpp)
target_link_libraries(quorvex_capture PUBLIC quorvex_cards quorvex_filters)

add_library(
  qvtv MODULE
  platform/tv/capture_file.cpp
  platform/tv/capture_filter.cpp
  platform/tv/capture_graph_builder.cpp
  platform/tv/capture_pin.cpp
  platform/tv/crossbar.cpp
  platform/tv/dropped_frames.cpp
  platform/tv/live_pin.cpp
  platform/tv/picture_controls.cpp
  platform/tv/preview_pin.cpp
  platform/tv/qvtv.cpp
  platform/tv/qvtv.def
  platform/tv/reception.cpp
  platform/tv/stream_config.cpp
  platform/tv/stream_control.cpp
  platform/tv/tv_tuner.cpp)
set_target_properties(qvtv PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
target_link_libraries(qvtv PRIVATE quorvex_capture gdi32)
