# Wine prefixes as fixtures of ctest. On Windows the programs run as they are.

# tavio_wine_prefix(<name> [REGISTER <targets>]): a fixture <name> that makes the prefix, with the servers registered in
# it, before the first test that needs it, and ends its programs after the last.
function(tavio_wine_prefix name)
  cmake_parse_arguments(ARG "" "" "REGISTER" ${ARGN})
  if(NOT CMAKE_CROSSCOMPILING)
    return()
  endif()
  set(servers "")
  foreach(target IN LISTS ARG_REGISTER)
    list(APPEND servers $<TARGET_FILE:${target}>)
  endforeach()
  set(folder ${CMAKE_BINARY_DIR}/prefix-${name})
  set(bits "")
  if(TAVIO_ARCHITECTURE STREQUAL x86)
    set(bits --x86)
  endif()
  # Its windows are nobody's to see, and take the focus of nobody who works at a display.
  add_test(NAME ${name}.prefix COMMAND ${CMAKE_COMMAND} -E env --unset=DISPLAY ${CMAKE_SOURCE_DIR}/tools/wine-prefix ${bits} ${folder} ${servers})
  add_test(NAME ${name}.stop COMMAND ${CMAKE_SOURCE_DIR}/tools/wine-prefix --stop ${folder})
  set_tests_properties(${name}.prefix PROPERTIES FIXTURES_SETUP ${name} TIMEOUT 300)
  set_tests_properties(${name}.stop PROPERTIES FIXTURES_CLEANUP ${name} TIMEOUT 60)
endfunction()

# tavio_add_prefix_test(<prefix> <test> <command>...): a test for which the prefix is there, one at a time, since they share
# what is registered and the folder for temporary files beside the servers. Exit code 77 says that it was skipped.
function(tavio_add_prefix_test prefix test)
  add_test(NAME ${test} COMMAND ${ARGN})
  set_tests_properties(${test} PROPERTIES FIXTURES_REQUIRED ${prefix} RESOURCE_LOCK servers TIMEOUT 120
    SKIP_RETURN_CODE 77)
endfunction()

# tavio_add_wine_test(<prefix> <test> [AROUND <command>...] PROGRAM <program> [argument...]): a test whose program runs in
# the prefix, and passes if it ends with 0 and "finished"; <command> is what runs all that.
function(tavio_add_wine_test prefix test)
  cmake_parse_arguments(PARSE_ARGV 2 ARG "" "" "AROUND;PROGRAM")
  set(runner "")
  if(CMAKE_CROSSCOMPILING)
    set(runner ${CMAKE_SOURCE_DIR}/tests/ends-well finished
      ${CMAKE_SOURCE_DIR}/tools/in-prefix ${CMAKE_BINARY_DIR}/prefix-${prefix})
  endif()
  tavio_add_prefix_test(${prefix} ${test} ${ARG_AROUND} ${runner} ${ARG_PROGRAM})
endfunction()
