# The platform layer's media source, and what the layer's other filters stand on too. FFmpeg: tools/deps/build-deps.
set(deps_dir ${CMAKE_SOURCE_DIR}/build/deps)
add_library(ffmpeg INTERFACE)
target_include_directories(ffmpeg SYSTEM INTERFACE ${deps_dir}/include)
target_link_directories(ffmpeg INTERFACE ${deps_dir}/lib)
target_link_libraries(ffmpeg INTERFACE avformat avcodec swscale swresample avutil bcrypt)

add_library(
  quorvex_filters STATIC
  platform/common/caption_painter.cpp
  platform/common/decoder.cpp
  platform/common/filter_base.cpp
  platform/common/input_pin.cpp
  platform/common/line21_control.cpp
  platform/common/media_file.cpp
  platform/common/media_type.cpp
  platform/common/output_pin.cpp
  platform/common/pin_base.cpp
  platform/common/pin_category.cpp
  platform/common/picture_converter.cpp
  platform/common/picture_delivery.cpp
  platform/common/picture_feeder.cpp
  platform/common/sound_converter.cpp
  platform/common/sound_delivery.cpp
  platform/common/sound_feeder.cpp
  platform/common/timed_pictures.cpp)
target_link_libraries(quorvex_filters PUBLIC quorvex_com quorvex_overlays ffmpeg gdi32 ole32 oleaut32 strmiids uuid)

add_library(
  qvmedia MODULE
  platform/media/file_types.cpp
  platform/media/media_pin.cpp
  platform/media/media_source.cpp
  platform/media/playback.cpp
  platform/media/qvmedia.cpp
  platform/media/qvmedia.def)
set_target_properties(qvmedia PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
target_link_libraries(qvmedia PRIVATE quorvex_filters)
