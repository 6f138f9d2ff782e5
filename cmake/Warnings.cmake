# Every target of the project compiles with these; a warning stops the build.
if(MSVC)
  add_compile_options(/W4 /WX /utf-8 /permissive-)
else()
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
endif()
