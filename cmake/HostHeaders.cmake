# The libraries of the tools: korvu_cli11 and korvu_json, which are headers only, and korvu_fmt.
include_guard(GLOBAL)

# A Windows host brings them as CMake packages (vcpkg and Conan have all three). Elsewhere they are
# the host system's; but a cross-compiler must not see /usr/include as a whole, since the host's C
# headers are in it, so the folders that we use are linked into one of the build's own.
function(korvu_add_host_headers target folder package packageTarget)
  add_library(${target} INTERFACE)
  if(CMAKE_HOST_WIN32)
    find_package(${package} CONFIG REQUIRED)
    target_link_libraries(${target} INTERFACE ${packageTarget})
    return()
  endif()
  set(host_headers ${PROJECT_BINARY_DIR}/host-headers)
  file(MAKE_DIRECTORY ${host_headers})
  find_path(${target}_folder ${folder} PATHS /usr/include NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  file(CREATE_LINK ${${target}_folder}/${folder} ${host_headers}/${folder} SYMBOLIC)
  target_include_directories(${target} SYSTEM INTERFACE ${host_headers})
endfunction()

korvu_add_host_headers(korvu_cli11 CLI CLI11 CLI11::CLI11)
korvu_add_host_headers(korvu_json nlohmann nlohmann_json nlohmann_json::nlohmann_json)

# fmt as headers only would be compiled with each file that formats a line, for seconds each.
korvu_add_host_headers(korvu_fmt_headers fmt fmt fmt::fmt)
if(CMAKE_HOST_WIN32)
  add_library(korvu_fmt ALIAS korvu_fmt_headers)
else()
  add_library(korvu_fmt STATIC ${PROJECT_SOURCE_DIR}/tools/shared/fmt.cpp)
  target_link_libraries(korvu_fmt PUBLIC korvu_fmt_headers)
endif()
