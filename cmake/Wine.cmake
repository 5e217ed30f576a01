# Tests of Windows programs: under Wine where we cross-compile, directly on Windows.

function(korvu_add_wine_fixture)
  if(NOT CMAKE_CROSSCOMPILING)
    set(KORVU_WINE_TEST_PROPERTIES "" PARENT_SCOPE)
    return()
  endif()
  add_test(NAME wine.start COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} --start)
  add_test(NAME wine.stop COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} --stop)
  set_tests_properties(wine.start PROPERTIES FIXTURES_SETUP wine)
  set_tests_properties(wine.stop PROPERTIES FIXTURES_CLEANUP wine)
  set(KORVU_WINE_TEST_PROPERTIES FIXTURES_REQUIRED wine PARENT_SCOPE)
endfunction()
