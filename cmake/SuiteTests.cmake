# The lines of CTest for a test program. Starting a program costs more than most tests, so they share a
# process as far as they leave nothing behind that another would meet.

# Asks a program for its suites, when CTest starts.
set(KORVU_SUITE_LISTER ${CMAKE_CURRENT_LIST_DIR}/ListSuites.cmake)

# What runs a test program that cannot run here by itself.
set(KORVU_TEST_RUNNER "")
if(CMAKE_CROSSCOMPILING)
  set(KORVU_TEST_RUNNER ${CMAKE_CURRENT_LIST_DIR}/wine-test ${PROJECT_BINARY_DIR}/wine)
endif()

# One line for the whole program. It prints what failed and nothing else.
function(korvu_add_program_test target)
  add_test(NAME ${target} COMMAND ${KORVU_TEST_RUNNER} $<TARGET_FILE:${target}> --gtest_brief=1)
  if(KORVU_WINE_TEST_PROPERTIES)
    set_tests_properties(${target} PROPERTIES ${KORVU_WINE_TEST_PROPERTIES})
  endif()
endfunction()

# One line for each suite; for each test of those suites that are named in ALONE, a regular
# expression, whose tests change the process or leave threads in it that still see their variables.
function(korvu_add_suite_tests target alone)
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  file(
    GENERATE
    OUTPUT ${script}
    CONTENT
      "set(target \"${target}\")
set(program \"$<TARGET_FILE:${target}>\")
set(runner \"${KORVU_TEST_RUNNER}\")
set(alone \"${alone}\")
set(properties \"${KORVU_WINE_TEST_PROPERTIES}\")
set(list \"${CMAKE_CURRENT_BINARY_DIR}/${target}_tests.txt\")
include(\"${KORVU_SUITE_LISTER}\")
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${script})
endfunction()
