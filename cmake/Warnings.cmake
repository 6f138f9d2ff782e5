# Every target of the project compiles with these; a warning stops the build.
if(MSVC)
  # Never run. What is known of this compiler by its rules: it warns of headers that are not ours, of code behind calls that
  # never return, and of functions of the standard library for which it has others.
  add_compile_options(/W4 /WX /utf-8 /permissive- /external:anglebrackets /external:W0 /wd4702)
  add_compile_definitions(_CRT_SECURE_NO_WARNINGS)
else()
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # GCC 12 warns of overlapping copies in "text" + std::string, where there are none (GCC bug 105329).
  add_compile_options(-Wno-restrict)
elseif(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
  # GCC counts it no conversion in C++; the sources are to mean the same to both.
  add_compile_options(-Wno-sign-conversion)
endif()
