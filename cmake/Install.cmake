# What is installed and packed: one relocatable folder for applications of either toolchain, in the
# component "package". The symbols are a component of their own, since they are many times the size of
# all the rest.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

set(generated_dir ${PROJECT_BINARY_DIR}/package-files)

set(installed_targets KorvuTabletSettingsAPI)
if(KORVU_BUILD_TOOLS)
  list(APPEND installed_targets korvu-settings korvu-settings-panel korvu-settings-service)
endif()

# korvu_install_files(FOLDER FILE...): puts files into a folder of the package.
function(korvu_install_files folder)
  install(FILES ${ARGN} DESTINATION ${folder} COMPONENT package)
endfunction()

# korvu_way_between(RESULT FROM TO): the relative path from one installed folder to another.
function(korvu_way_between result from to)
  file(RELATIVE_PATH way /prefix/${from} /prefix/${to})
  string(REGEX REPLACE "/$" "" way ${way})
  set(${result} ${way} PARENT_SCOPE)
endfunction()

# Programs, and the symbols beside them --------------------------------------------------------------

install(
  TARGETS ${installed_targets}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT package
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT package)

foreach(target IN LISTS installed_targets)
  if(MSVC)
    set(symbols $<TARGET_PDB_FILE:${target}>)
  elseif(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    set(symbols $<TARGET_FILE_DIR:${target}>/$<TARGET_FILE_BASE_NAME:${target}>.pdb)
  else()
    set(symbols $<TARGET_FILE:${target}>.debug)
  endif()
  # Not every build type has them in a file of their own.
  install(FILES ${symbols} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT symbols OPTIONAL)
endforeach()

# The import library for Microsoft's linker ----------------------------------------------------------
#
# That linker takes no import library of ours but its own form, which needs only the names.

if(NOT MSVC)
  # llvm-lib would do too, but that of LLVM 14 reads no .def files. GNU's dlltool makes another form.
  find_program(LLVM_DLLTOOL NAMES llvm-dlltool
               DOC "Makes the import library for Microsoft's linker")
endif()
if(LLVM_DLLTOOL)
  set(definitions ${PROJECT_SOURCE_DIR}/src/core/${PROJECT_NAME}.def)
  set(msvc_library ${PROJECT_BINARY_DIR}/lib/${PROJECT_NAME}.lib)
  add_custom_command(
    OUTPUT ${msvc_library}
    COMMAND ${LLVM_DLLTOOL} --machine i386:x86-64 --input-def ${definitions} --dllname
            ${PROJECT_NAME}.dll --output-lib ${msvc_library}
    DEPENDS ${definitions}
    VERBATIM)
  add_custom_target(korvu-msvc-import-library ALL DEPENDS ${msvc_library})
  korvu_install_files(${CMAKE_INSTALL_LIBDIR} ${msvc_library})
elseif(NOT MSVC)
  # Whoever only builds and runs the programs does without it.
  install(CODE "message(FATAL_ERROR \"The package needs llvm-dlltool: scripts/setup.sh test\")"
          COMPONENT package)
endif()

# Headers, and how CMake and pkg-config find them ----------------------------------------------------

install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/include/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT package)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/${PROJECT_NAME})
set(config ${generated_dir}/${PROJECT_NAME}Config.cmake)
set(config_version ${generated_dir}/${PROJECT_NAME}ConfigVersion.cmake)
set(config_dll ${CMAKE_INSTALL_BINDIR}/${PROJECT_NAME}.dll)
set(config_mingw_library ${CMAKE_INSTALL_LIBDIR}/lib${PROJECT_NAME}.dll.a)
set(config_msvc_library ${CMAKE_INSTALL_LIBDIR}/${PROJECT_NAME}.lib)
set(config_include ${CMAKE_INSTALL_INCLUDEDIR})
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/Config.cmake.in ${config}
  INSTALL_DESTINATION ${config_dir}
  PATH_VARS config_dll config_mingw_library config_msvc_library config_include)
write_basic_package_version_file(${config_version} COMPATIBILITY SameMajorVersion)
korvu_install_files(${config_dir} ${config} ${config_version})

# From the folder of the .pc file, so that the package may lie anywhere.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
korvu_way_between(pkgconfig_prefix ${pkgconfig_dir} "")
configure_file(${PROJECT_SOURCE_DIR}/cmake/package.pc.in ${generated_dir}/${PROJECT_NAME}.pc @ONLY)
korvu_install_files(${pkgconfig_dir} ${generated_dir}/${PROJECT_NAME}.pc)

# Pages and examples ---------------------------------------------------------------------------------
#
# They lie to each other as they do in the source tree, so that their links hold, but for those to the
# headers, which are made anew at the end.

korvu_install_files(${CMAKE_INSTALL_DOCDIR} ${PROJECT_SOURCE_DIR}/CHANGELOG.md
                    ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md)
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/examples
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT package
  PATTERN "Doxyfile*" EXCLUDE
  REGEX "examples/CMakeLists.txt$" EXCLUDE)
# The panel's sources are the large example.
install(
  DIRECTORY ${PROJECT_SOURCE_DIR}/tools/settings-panel ${PROJECT_SOURCE_DIR}/tools/shared
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/tools
  COMPONENT package)
korvu_install_files(${CMAKE_INSTALL_DOCDIR}/tools/settings-service
                    ${PROJECT_SOURCE_DIR}/tools/settings-service/README.md)
# The package for Node comes from scripts/test-node.sh; here is what tells of it.
korvu_install_files(${CMAKE_INSTALL_DOCDIR}/bindings/node ${PROJECT_SOURCE_DIR}/bindings/node/README.md)

korvu_way_between(headers_from_pages ${CMAKE_INSTALL_DOCDIR} ${CMAKE_INSTALL_INCLUDEDIR})
set(installed_pages "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DOCDIR}")
install(
  CODE "execute_process(
    COMMAND \"${CMAKE_COMMAND}\" -D \"FOLDER=${installed_pages}\" -D \"HEADERS=${headers_from_pages}\"
            -P \"${PROJECT_SOURCE_DIR}/cmake/RelinkPages.cmake\"
    COMMAND_ERROR_IS_FATAL ANY)"
  COMPONENT package)

# The licenses of what is compiled into the files. On other systems than Debian they lie elsewhere,
# and whoever packs there adds them.
foreach(package libcli11-dev libfmt-dev mingw-w64-x86-64-dev nlohmann-json3-dev gcc-mingw-w64-base)
  install(
    FILES /usr/share/doc/${package}/copyright
    DESTINATION ${CMAKE_INSTALL_DOCDIR}/third-party
    RENAME ${package}.txt
    COMPONENT package
    OPTIONAL)
endforeach()

# The two ZIPs ---------------------------------------------------------------------------------------

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME ${PROJECT_NAME})
set(CPACK_PACKAGE_FILE_NAME ${PROJECT_NAME}-${PROJECT_VERSION}-win64)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_COMPONENTS_ALL package symbols)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_ARCHIVE_PACKAGE_FILE_NAME ${CPACK_PACKAGE_FILE_NAME})
set(CPACK_ARCHIVE_SYMBOLS_FILE_NAME ${CPACK_PACKAGE_FILE_NAME}-symbols)
include(CPack)
