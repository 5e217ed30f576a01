# What a compiler can build in for the tests' sake. Only where the library runs on a double of the
# platform: there is none of it for Windows programs here.
set(KORVU_SANITIZERS "" CACHE STRING "Sanitizers to build in, as -fsanitize= takes them")
option(KORVU_COVERAGE "Count which lines and branches of the library run" OFF)
option(KORVU_FUZZING "Build the fuzz targets" OFF)
option(KORVU_SIMULATION "Build the simulator" OFF)

if(NOT WIN32 AND NOT KORVU_BUILD_TESTS)
  message(FATAL_ERROR "The library is for Windows; elsewhere only its tests can be built.")
endif()

if(KORVU_SANITIZERS)
  add_compile_options(-fsanitize=${KORVU_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KORVU_SANITIZERS})
endif()
if(KORVU_COVERAGE)
  add_link_options(-fprofile-instr-generate)
endif()

# korvu_instrument(TARGET): code under test, whose coverage is counted and steers the fuzzing, if
# there is any.
function(korvu_instrument target)
  if(KORVU_COVERAGE)
    target_compile_options(${target} PRIVATE -fprofile-instr-generate -fcoverage-mapping)
  endif()
  if(KORVU_FUZZING)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()
