# Read by CTest: adds a line for each suite of a test program, or for each test of a suite whose tests
# need a process each. Its parameters are set by the script that korvu_add_suite_tests writes.

if(NOT EXISTS "${program}")
  add_test("${target}_NOT_BUILT" "${target}_NOT_BUILT")
  return()
endif()

# The program is asked again only after it was built again.
if(NOT EXISTS "${list}" OR NOT "${list}" IS_NEWER_THAN "${program}")
  execute_process(
    COMMAND ${runner} "${program}" --gtest_list_tests
    OUTPUT_VARIABLE listed
    RESULT_VARIABLE result
    TIMEOUT 120)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${program} does not list its tests: ${result}\n${listed}")
  endif()
  file(WRITE "${list}" "${listed}")
endif()
file(STRINGS "${list}" lines)

foreach(line IN LISTS lines)
  string(REGEX REPLACE "[ ]*#.*$" "" name "${line}")  # a parameter, written out
  if(name MATCHES "^[^ ].*[.]$")
    set(suite "${name}")
    if(alone STREQUAL "" OR NOT suite MATCHES "${alone}")
      set(tests "${suite}*")
    else()
      set(tests "")
    endif()
  elseif(name MATCHES "^  (.+)$")
    set(tests "${suite}${CMAKE_MATCH_1}")
    if(alone STREQUAL "" OR NOT suite MATCHES "${alone}")
      continue()
    endif()
  else()
    continue()  # what the runner prints of itself
  endif()
  if(tests MATCHES "DISABLED_" OR tests STREQUAL "")
    continue()
  endif()
  add_test("${tests}" ${runner} "${program}" "--gtest_filter=${tests}")
  set_tests_properties("${tests}" PROPERTIES ${properties})
endforeach()
