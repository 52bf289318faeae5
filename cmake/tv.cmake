# The platform layer's virtual capture cards, and what qvdrive plugs them in with.
add_library(quorvex_cards STATIC platform/tv/card_table.cpp platform/tv/shared_card.cpp)
target_link_libraries(quorvex_cards PUBLIC quorvex_drive quorvex_com quorvex_pictures)

# What the tests of capture graphs use too.
add_library(
  quorvex_capture STATIC platform/tv/capture_file.cpp platform/tv/capture_type.cpp platform/tv/graph_walk.cpp platform/tv/journal_keeper.cpp
                         platform/tv/station_file.cpp platform/tv/station_pictures.cpp)
target_link_libraries(quorvex_capture PUBLIC quorvex_avi quorvex_cards quorvex_filters)

add_library(
  qvtv MODULE
  platform/tv/avi_mux.cpp
  platform/tv/caption_mixer.cpp
  platform/tv/caption_stream.cpp
  platform/tv/capture_copy.cpp
  platform/tv/capture_filter.cpp
  platform/tv/capture_graph_builder.cpp
  platform/tv/capture_output.cpp
  platform/tv/capture_pin.cpp
  platform/tv/capture_recovery.cpp
  platform/tv/capture_space.cpp
  platform/tv/chain_filter.cpp
  platform/tv/choice_dialog.cpp
  platform/tv/crossbar.cpp
  platform/tv/display_dialog.cpp
  platform/tv/driver_dialogs.cpp
  platform/tv/dropped_frames.cpp
  platform/tv/file_writer.cpp
  platform/tv/line21_filter.cpp
  platform/tv/line_config.cpp
  platform/tv/line_input.cpp
  platform/tv/live_pin.cpp
  platform/tv/mux_format.cpp
  platform/tv/mux_settings.cpp
  platform/tv/picture_controls.cpp
  platform/tv/preview_pin.cpp
  platform/tv/programme_picture.cpp
  platform/tv/qvtv.cpp
  platform/tv/qvtv.def
  platform/tv/qvtv.rc
  platform/tv/reception.cpp
  platform/tv/recording_thread.cpp
  platform/tv/scene_sound.cpp
  platform/tv/sound_cable.cpp
  platform/tv/station_sound.cpp
  platform/tv/stream_config.cpp
  platform/tv/stream_control.cpp
  platform/tv/tv_tuner.cpp
  platform/tv/vbi_pins.cpp
  platform/tv/vbi_surfaces.cpp)
set_target_properties(qvtv PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
target_link_libraries(qvtv PRIVATE quorvex_capture quorvex_waves comctl32 gdi32)
set_source_files_properties(platform/tv/qvtv.rc PROPERTIES OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/platform/tv/dialog_ids.h)
