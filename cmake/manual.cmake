# The manual as one HTML file, for packages to install: build/win/manual.html.
file(GLOB manual_pictures CONFIGURE_DEPENDS docs/*.png docs/keys/*.png docs/states/*.png)
set(manual_documents ${CMAKE_SOURCE_DIR}/docs/manual.md ${CMAKE_SOURCE_DIR}/docs/stores.md)
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/manual.html
  COMMAND /usr/bin/python3 ${CMAKE_SOURCE_DIR}/tools/manual/make_html.py ${manual_documents} ${CMAKE_BINARY_DIR}/manual.html
  DEPENDS ${manual_documents} tools/manual/make_html.py ${manual_pictures}
  COMMENT "Making the manual")
add_custom_target(manual ALL DEPENDS ${CMAKE_BINARY_DIR}/manual.html)
