# The platform layer's sound renderer, for where the platform's own is out of the mixer's reach.
add_library(
  qvsound MODULE
  platform/sound/qvsound.cpp
  platform/sound/qvsound.def
  platform/sound/renderer_clock.cpp
  platform/sound/sound_player.cpp
  platform/sound/sound_renderer.cpp)
set_target_properties(qvsound PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
target_link_libraries(qvsound PRIVATE quorvex_filters quorvex_sound quorvex_waves)
