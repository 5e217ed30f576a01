# clang and lld for the same target as mingw.cmake, with GCC's standard library: a second opinion on
# warnings, the check of the lock annotations, and debug symbols that Windows debuggers read.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET ${triple})
set(CMAKE_CXX_COMPILER_TARGET ${triple})
set(CMAKE_RC_COMPILER ${triple}-windres)
set(CMAKE_AR llvm-ar)
set(CMAKE_RANLIB llvm-ranlib)

# clang does not find Debian's POSIX flavour of GCC for this target by itself; the thread-local
# variables in GCC's library are emulated ones.
set(gcc /usr/lib/gcc/${triple}/12-posix)
set(CMAKE_CXX_FLAGS_INIT
    "-Wno-unused-command-line-argument -femulated-tls -nostdinc++ -isystem ${gcc}/include/c++ -isystem ${gcc}/include/c++/${triple} -isystem ${gcc}/include/c++/backward")
set(link_flags "-static -fuse-ld=lld -L${gcc} -L/usr/${triple}/lib")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${link_flags}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${link_flags}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${link_flags}")

set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

include(${CMAKE_CURRENT_LIST_DIR}/wine.cmake)
