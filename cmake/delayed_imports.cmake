# Libraries that only some uses of the program need are loaded when one of these functions is first called: the program starts sooner. A function
# that is not named here links as usual, and brings its library in at the start.
set(delayed_comdlg32 CommDlgExtendedError GetFileTitleA GetOpenFileNameA)
set(delayed_msacm32 acmFormatChooseA acmMetrics)
set(delayed_oleacc AccessibleObjectFromWindow LresultFromObject)
set(delayed_quartz AMGetErrorTextA)
set(delayed_shell32 DragAcceptFiles DragFinish DragQueryFileA)

find_program(DLLTOOL x86_64-w64-mingw32-dlltool REQUIRED)
set(delayed_imports)
foreach(name comdlg32 msacm32 oleacc quartz shell32)
  set(base ${CMAKE_BINARY_DIR}/delayed_${name})
  string(REPLACE ";" "\n" functions "${delayed_${name}}")
  file(CONFIGURE OUTPUT ${base}.def CONTENT "LIBRARY ${name}.dll\nEXPORTS\n@functions@\n" @ONLY)
  add_custom_command(
    OUTPUT ${base}.a
    # The members' names, by which the linker sorts, would else hold dlltool's process id, and symbols the library's whole path.
    COMMAND ${DLLTOOL} --input-def ${base}.def --output-delaylib delayed_${name}.a --dllname ${name}.dll --temp-prefix delayed_${name}
    WORKING_DIRECTORY ${CMAKE_BINARY_DIR}
    DEPENDS ${base}.def)
  list(APPEND delayed_imports ${base}.a)
endforeach()
add_custom_target(delayed_imports DEPENDS ${delayed_imports})
