# The program, the platform layer and their tests, for Windows.
enable_language(RC)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
add_compile_definitions(WINVER=0x0A00 _WIN32_WINNT=0x0A00 NO_DSHOW_STRSAFE)
include_directories(${CMAKE_SOURCE_DIR})
# The same sources make the same programs, wherever and whenever: no paths, no times.
add_compile_options(-gdwarf-4 -fstack-protector-strong -ffile-prefix-map=${CMAKE_SOURCE_DIR}=.)
add_link_options(-fstack-protector-strong -Wl,--nxcompat,--dynamicbase,--high-entropy-va,--no-insert-timestamp,--file-alignment,4096)

# `programs` are what users get. They say what they are and of which version, and are delivered without their debugging symbols
# (a loader reads them into every process); these lie in build/win/symbols. (-p: or the time of stripping would be in the header.)
add_custom_target(programs)
function(deliver target description)
  add_dependencies(programs ${target})
  get_target_property(type ${target} TYPE)
  set(file_type VFT_DLL)
  set(file_suffix .dll)
  if(type STREQUAL EXECUTABLE)
    set(file_type VFT_APP)
    set(file_suffix .exe)
  endif()
  configure_file(${CMAKE_SOURCE_DIR}/resources/version.rc.in ${CMAKE_BINARY_DIR}/version/${target}.rc @ONLY)
  target_sources(${target} PRIVATE ${CMAKE_BINARY_DIR}/version/${target}.rc)
  set(symbols ${CMAKE_BINARY_DIR}/symbols/$<TARGET_FILE_NAME:${target}>.debug)
  add_custom_command(
    TARGET ${target}
    POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/symbols
    COMMAND ${CMAKE_OBJCOPY} -p --only-keep-debug $<TARGET_FILE:${target}> ${symbols}
    COMMAND ${CMAKE_STRIP} -p --strip-debug $<TARGET_FILE:${target}>
    COMMAND ${CMAKE_OBJCOPY} -p --add-gnu-debuglink=${symbols} $<TARGET_FILE:${target}>)
endfunction()

# Artwork, drawn from its sources.
file(GLOB art_sources CONFIGURE_DEPENDS resources/art/*.py)
set(art_dir ${CMAKE_BINARY_DIR}/art)
set(art_files ${art_dir}/panel.bmp ${art_dir}/segments.bmp ${art_dir}/panel_2x.bmp ${art_dir}/segments_2x.bmp ${art_dir}/quorvex.ico)
add_custom_command(
  OUTPUT ${art_files}
  COMMAND /usr/bin/python3 ${CMAKE_SOURCE_DIR}/resources/art/make_art.py ${art_dir}
  DEPENDS ${art_sources}
  COMMENT "Drawing the artwork")

# Everything of the player but its entry point.
add_library(
  quorvex_player STATIC
  base/file_bytes.cpp
  base/full_path.cpp
  base/ini_file.cpp
  base/wide_text.cpp
  devices/audio_adjustment.cpp
  devices/cd/cd_device.cpp
  devices/cd/cd_drive.cpp
  devices/cd/cd_playlist_dialog.cpp
  devices/cd/mci_error.cpp
  devices/cd/playlist_view.cpp
  devices/config_store.cpp
  devices/current_device.cpp
  devices/device.cpp
  devices/dvd/dvd_device.cpp
  devices/dvd/dvd_events.cpp
  devices/dvd/dvd_menus.cpp
  devices/dvd/dvd_streams.cpp
  devices/graph_device.cpp
  devices/mci_drive.cpp
  devices/media/album_file.cpp
  devices/media/file_device.cpp
  devices/media/file_drop_target.cpp
  devices/media/m3u_file.cpp
  devices/media/media_select_panel.cpp
  devices/media/open_file_dialog.cpp
  devices/media/playlist_title_dialog.cpp
  devices/media/preview_playlist.cpp
  devices/media/render_file.cpp
  devices/open_sequence.cpp
  devices/shared_state.cpp
  devices/tv/audio_format.cpp
  devices/tv/auto_tune.cpp
  devices/tv/autotune_dialog.cpp
  devices/tv/caption_chain.cpp
  devices/tv/capture_devices.cpp
  devices/tv/capture_dialogs.cpp
  devices/tv/capture_disk.cpp
  devices/tv/capture_file.cpp
  devices/tv/capture_file_dialog.cpp
  devices/tv/capture_graph.cpp
  devices/tv/channels.cpp
  devices/tv/device_category.cpp
  devices/tv/name_guard.cpp
  devices/tv/pin_format.cpp
  devices/tv/pins.cpp
  devices/tv/ready_to_record_dialog.cpp
  devices/tv/record_graph.cpp
  devices/tv/recording.cpp
  devices/tv/tv_device.cpp
  devices/tv/video_adjustment.cpp
  devices/tv/video_inputs.cpp
  mixer/mixer.cpp
  panel/accessible_object.cpp
  panel/answer_watch.cpp
  panel/control_panel.cpp
  panel/list_box.cpp
  panel/main_window.cpp
  panel/panel_accessibility.cpp
  panel/popup_menu.cpp
  panel/shown_colours.cpp
  panel/skin.cpp
  panel/status_display.cpp
  panel/window_place.cpp
  setup/capture_page.cpp
  setup/cd_page.cpp
  setup/dvd_page.cpp
  setup/general_page.cpp
  setup/media_files_page.cpp
  setup/setup_page.cpp
  setup/setup_sheet.cpp
  setup/stored_boxes.cpp
  setup/subject.cpp
  setup/tv_page.cpp
  shell/actions.cpp
  shell/button_behaviour.cpp
  shell/chapters_menu.cpp
  shell/command_table.cpp
  shell/control_window.cpp
  shell/device_switch.cpp
  shell/key_focus.cpp
  shell/lifecycle.cpp
  shell/media_select_menu.cpp
  shell/open_files.cpp
  shell/remote_control.cpp
  shell/settings.cpp
  shell/startup.cpp
  video/on_screen_display.cpp
  video/picture_user.cpp
  video/renderer_window.cpp
  video/video_window.cpp)
include(cmake/delayed_imports.cmake)
add_dependencies(quorvex_player delayed_imports)
target_link_libraries(quorvex_player PUBLIC quorvex_arithmetic ${delayed_imports} comctl32 gdi32 ole32 oleaut32 strmiids uuid winmm)

# The resources, linked into the program and into the tests that show the panel.
add_library(quorvex_resources OBJECT resources/quorvex.rc)
target_include_directories(quorvex_resources PRIVATE ${CMAKE_SOURCE_DIR} ${art_dir})
set_source_files_properties(resources/quorvex.rc PROPERTIES OBJECT_DEPENDS "${art_files};${CMAKE_SOURCE_DIR}/resources/quorvex.manifest;${CMAKE_SOURCE_DIR}/resources/ids.h;${CMAKE_SOURCE_DIR}/resources/setup_pages.rc")

add_executable(quorvex WIN32 shell/main.cpp $<TARGET_OBJECTS:quorvex_resources>)
target_link_libraries(quorvex PRIVATE quorvex_player)

# Works the running program from scripts.
add_executable(qvremote remote/main.cpp remote/remote_client.cpp base/full_path.cpp platform/drive/qvdrive.rc)
target_link_libraries(qvremote PRIVATE quorvex_options)

# The platform layer's CD drive: an MCI driver, and the program that works the drive.
add_library(quorvex_drive STATIC platform/cd/shared_drive.cpp platform/common/shared_file.cpp)
target_link_libraries(quorvex_drive PUBLIC quorvex_disc shell32 winmm)

# Sound through waveOut, for the drive and the sound renderer.
add_library(quorvex_waves STATIC platform/common/wave_output.cpp)
target_link_libraries(quorvex_waves PUBLIC quorvex_options winmm)

add_library(qvcd MODULE platform/cd/cd_engine.cpp platform/cd/mci_driver.cpp platform/cd/qvcd.def platform/cd/qvcd.rc)
set_target_properties(qvcd PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
target_link_libraries(qvcd PRIVATE quorvex_drive quorvex_waves)

add_executable(qvdrive platform/drive/card_commands.cpp platform/drive/main.cpp base/full_path.cpp platform/drive/qvdrive.rc)
target_link_libraries(qvdrive PRIVATE quorvex_cards)

# What makes a DLL a COM server, and registers it.
add_library(quorvex_com STATIC platform/common/com_server.cpp)
target_link_libraries(quorvex_com PUBLIC quorvex_options ole32 strmiids uuid)

include(cmake/media.cmake)
include(cmake/dvd.cmake)
include(cmake/sound.cmake)
include(cmake/tv.cmake)

# The demo disc, rendered from scores.
file(GLOB demo_sources CONFIGURE_DEPENDS resources/demo/*.py)
set(demo_dir ${CMAKE_BINARY_DIR}/demo)
add_custom_command(
  OUTPUT ${demo_dir}/demo.bin ${demo_dir}/demo.cue ${demo_dir}/demo.abm
  COMMAND /usr/bin/python3 ${CMAKE_SOURCE_DIR}/resources/demo/make_demo_disc.py ${demo_dir}
  DEPENDS ${demo_sources}
  COMMENT "Rendering the demo disc")
add_custom_target(demo ALL DEPENDS ${demo_dir}/demo.cue)

include(cmake/manual.cmake)

deliver(quorvex "Quorvex")
deliver(qvremote "Works the running remote control of Quorvex")
deliver(qvdrive "The hand at Quorvex's CD drive and capture cards")
deliver(qvcd "CD drive of Quorvex")
deliver(qvmedia "Media source of Quorvex")
deliver(qvdvd "DVD player of Quorvex")
deliver(qvsound "Sound renderer of Quorvex")
deliver(qvtv "Virtual capture cards of Quorvex")

# ./run builds without the tests' packages; ./check installs them.
if(EXISTS /usr/src/googletest)
  add_subdirectory(tests/win)
  add_subdirectory(tests/bench)
endif()
