# How our own code is compiled: korvu_options, which every target of ours links privately.

add_library(korvu_options INTERFACE)

# Warnings are errors for the compilers that the project is built with. Nobody has built it with
# Microsoft's yet, and whoever does so first is not to be turned away by a warning.
if(MSVC)
  target_compile_options(korvu_options INTERFACE /W4 /utf-8 /permissive-)
  target_compile_definitions(korvu_options INTERFACE _CRT_SECURE_NO_WARNINGS)
else()
  target_compile_options(korvu_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
  if(CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang)$")
    target_compile_options(korvu_options INTERFACE -Werror)
  endif()
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  target_compile_options(korvu_options INTERFACE -Wthread-safety)
endif()
target_compile_definitions(korvu_options INTERFACE UNICODE _UNICODE _WIN32_WINNT=0x0601 WIN32_LEAN_AND_MEAN NOMINMAX)

string(REPLACE "-O3" "-O2" CMAKE_C_FLAGS_RELEASE "${CMAKE_C_FLAGS_RELEASE}")
string(REPLACE "-O3" "-O2" CMAKE_CXX_FLAGS_RELEASE "${CMAKE_CXX_FLAGS_RELEASE}")

# The same bytes whatever the folder and the day.
if(NOT MSVC)
  add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=./build)
endif()

if(MINGW)
  # Random addresses in the whole 64-bit space, and no execution of data.
  add_link_options(-Wl,--no-insert-timestamp -Wl,--dynamicbase -Wl,--high-entropy-va -Wl,--nxcompat)

  if(CMAKE_BUILD_TYPE STREQUAL "Debug")
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    # Trapping: there is no runtime for this target that could print a report.
    add_compile_options(-fsanitize=undefined -fsanitize-undefined-trap-on-error)
  endif()

  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # Symbols for Windows debuggers: a .pdb beside each file, known to it by its bare name.
    add_compile_options(-g -gcodeview)
    add_link_options(-s -Wl,--pdb= -Wl,-Xlink=-pdbaltpath:%_PDB%)
    link_libraries(winpthread)  # which GCC's driver adds by itself
  endif()
endif()

# What GCC 12 is told where headers are precompiled: it forgets that they are the system's, and sees its
# own string overrun.
set(KORVU_PRECOMPILED_OPTIONS "")
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(KORVU_PRECOMPILED_OPTIONS -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

# korvu_precompile_headers(TARGET [HEADER]...): the standard headers that most files include, and some
# more, are parsed once for the target. Each file still includes what it uses.
function(korvu_precompile_headers target)
  target_precompile_headers(${target} PRIVATE <algorithm> <functional> <map> <memory> <optional> <string> <variant>
                            <vector> ${ARGN})
  target_compile_options(${target} PRIVATE ${KORVU_PRECOMPILED_OPTIONS})
endfunction()

# korvu_split_debug_file(TARGET): moves a release build's symbols into TARGET's file plus ".debug".
# To keep dates is to keep the one in the file's header, too, which would else be today's.
function(korvu_split_debug_file target)
  if(NOT MINGW OR NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU" OR NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    return()
  endif()
  add_custom_command(
    TARGET ${target}
    POST_BUILD
    COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug $<TARGET_FILE:${target}> $<TARGET_FILE:${target}>.debug
    COMMAND ${CMAKE_STRIP} --preserve-dates --strip-all $<TARGET_FILE:${target}>
    COMMAND ${CMAKE_OBJCOPY} --preserve-dates --add-gnu-debuglink=$<TARGET_FILE:${target}>.debug $<TARGET_FILE:${target}>
    VERBATIM)
endfunction()
