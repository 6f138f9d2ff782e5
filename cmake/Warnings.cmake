# Every target of the project compiles with these; a warning stops the build.
if(MSVC)
  add_compile_options(/W4 /WX /utf-8 /permissive-)
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
