# GoogleTest from its Debian sources, built with the compiler at hand. Its own warnings are not ours.
set(TAVIO_GOOGLETEST /usr/src/googletest/googletest CACHE PATH "Sources of GoogleTest")
set(INSTALL_GTEST OFF)
add_subdirectory(${TAVIO_GOOGLETEST} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
foreach(target gtest gtest_main)
  target_compile_options(${target} PRIVATE -w)
endforeach()
