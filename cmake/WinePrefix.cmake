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
  add_test(NAME ${name}.prefix COMMAND ${CMAKE_SOURCE_DIR}/tools/wine-prefix ${bits} ${folder} ${servers})
  add_test(NAME ${name}.stop COMMAND ${CMAKE_SOURCE_DIR}/tools/wine-prefix --stop ${folder})
  set_tests_properties(${name}.prefix PROPERTIES FIXTURES_SETUP ${name} TIMEOUT 300)
  set_tests_properties(${name}.stop PROPERTIES FIXTURES_CLEANUP ${name} TIMEOUT 60)
endfunction()

# tavio_add_wine_test(<prefix> <test> <program> [argument...]): a test that runs in a prefix, one at a time, since what
# is registered there is shared. It passes when it says "finished" and nothing of "FAILED": a program that runs out of
# stack under Wine ends as if all were well.
function(tavio_add_wine_test prefix test)
  set(runner "")
  if(CMAKE_CROSSCOMPILING)
    set(runner ${CMAKE_SOURCE_DIR}/tools/in-prefix ${CMAKE_BINARY_DIR}/prefix-${prefix})
  endif()
  add_test(NAME ${test} COMMAND ${runner} ${ARGN})
  set_tests_properties(${test} PROPERTIES FIXTURES_REQUIRED ${prefix} RESOURCE_LOCK ${prefix} TIMEOUT 120
    PASS_REGULAR_EXPRESSION finished FAIL_REGULAR_EXPRESSION FAILED)
endfunction()
