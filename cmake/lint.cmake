# clang-tidy runs beside the compiler, so that a file is looked at again only when it or something it includes changed.
if(QUORVEX_LINT)
  find_program(CLANG_TIDY clang-tidy REQUIRED)
  set(CMAKE_CXX_CLANG_TIDY ${CLANG_TIDY} --quiet)
  if(WIN32)
    # clang finds neither the target nor GCC's headers by itself.
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=include OUTPUT_VARIABLE gcc_include OUTPUT_STRIP_TRAILING_WHITESPACE)
    cmake_path(GET gcc_include PARENT_PATH gcc_dir)
    foreach(argument --target=x86_64-w64-mingw32 -isystem${gcc_dir}/include/c++ -isystem${gcc_dir}/include/c++/x86_64-w64-mingw32
                     -isystem/usr/x86_64-w64-mingw32/include)
      list(APPEND CMAKE_CXX_CLANG_TIDY --extra-arg=${argument})
    endforeach()
  endif()
endif()
