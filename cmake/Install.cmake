# Install: the shared and the static library, the public headers, a CMake
# package (find_package(ZTkDb) -> ZTkDb::ztkdb, ZTkDb::ztkdb_static) and a
# pkg-config file; the ztk tool with its manual page and bash completion
# (both written by the tool itself), the schema files, the Python module.
# Components follow the Debian packages made of them (cmake/Package.cmake):
# runtime (libztkdb0), dev (libztkdb-dev), tool (ztk), python (python3-ztkdb).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# Who answers for the packages, in one place (the control files, the
# changelog): a distributor sets their own.
set(ZTKDB_MAINTAINER "ZTkDb maintainers <maintainers@ztkdb.invalid>" CACHE STRING
    "Maintainer of the Debian packages (Name <address>)")
set(ZTKDB_HOMEPAGE "https://ztkdb.invalid/" CACHE STRING "Homepage of the packages")
install(TARGETS ztkdb ztkdb_static EXPORT ZTkDbTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY include/ztkdb DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)
install(EXPORT ZTkDbTargets NAMESPACE ZTkDb:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZTkDb
  COMPONENT dev)
configure_package_config_file(cmake/ZTkDbConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/ZTkDbConfig.cmake INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZTkDb)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZTkDbConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZTkDbConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ZTkDbConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/ZTkDb COMPONENT dev)
# The prefix as seen from the pkg-config folder, however deep the libdir is
# (lib, lib64, lib/x86_64-linux-gnu), so that an unpacked tree works anywhere.
file(RELATIVE_PATH ZTKDB_PC_TO_PREFIX ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" ZTKDB_PC_TO_PREFIX "${ZTKDB_PC_TO_PREFIX}")
configure_file(cmake/ztkdb.pc.in ${CMAKE_CURRENT_BINARY_DIR}/ztkdb.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ztkdb.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT dev)

install(TARGETS ztk RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
add_custom_command(OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/ztk.1.gz ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash
  COMMAND ${CMAKE_COMMAND} -E env LANGUAGE= LC_ALL=C.UTF-8 $<TARGET_FILE:ztk> man > ${CMAKE_CURRENT_BINARY_DIR}/ztk.1
  COMMAND gzip -9nf ${CMAKE_CURRENT_BINARY_DIR}/ztk.1
  COMMAND ztk completion > ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash
  DEPENDS ztk COMMENT "Writing the manual page and the bash completion of ztk")
add_custom_target(ztk_docs ALL DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/ztk.1.gz
                                       ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ztk.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
  COMPONENT tool)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ztk COMPONENT tool)
install(FILES schema/sqlite.sql schema/postgresql.sql schema/mariadb.sql
  DESTINATION ${CMAKE_INSTALL_DATADIR}/ztkdb/schema COMPONENT tool)

# Each package's copyright and changelog, where Debian looks for them.
configure_file(packaging/changelog.in ${CMAKE_CURRENT_BINARY_DIR}/changelog @ONLY)
add_custom_command(OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
  COMMAND gzip -9nc ${CMAKE_CURRENT_BINARY_DIR}/changelog > ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
  DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/changelog)
add_custom_target(ztkdb_changelog ALL DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)
foreach(pair runtime:libztkdb0 dev:libztkdb-dev tool:ztk python:python3-ztkdb)
  string(REPLACE ":" ";" pair ${pair})
  list(GET pair 0 component)
  list(GET pair 1 package)
  install(FILES packaging/copyright ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endforeach()
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ztk COMPONENT tool)

# The Python module where the system's python3 finds it; a tree installed
# elsewhere puts that folder on PYTHONPATH.
install(FILES python/ztkdb/__init__.py python/ztkdb/__init__.pyi python/ztkdb/py.typed
  python/ztkdb/_signatures.py
  DESTINATION lib/python3/dist-packages/ztkdb COMPONENT python)

# The API reference from the public headers' contracts (scripts/package):
# every public member documented, or the build fails.
option(ZTKDB_BUILD_DOCS "Build the API reference with Doxygen" OFF)
if(ZTKDB_BUILD_DOCS)
  find_package(Doxygen REQUIRED)
  set(DOXYGEN_PROJECT_NAME "ZTkDb")
  set(DOXYGEN_PROJECT_NUMBER ${PROJECT_VERSION})
  set(DOXYGEN_PROJECT_BRIEF "Typed row-level access to the help-desk module database")
  set(DOXYGEN_EXTRACT_ALL NO)
  set(DOXYGEN_EXCLUDE_SYMBOLS "detail" "ZTKDB_*")
  set(DOXYGEN_PREDEFINED "ZTKDB_API=")
  set(DOXYGEN_GENERATE_LATEX NO)
  set(DOXYGEN_QUIET YES)
  set(DOXYGEN_WARN_IF_UNDOCUMENTED YES)
  set(DOXYGEN_WARN_IF_DOC_ERROR YES)
  set(DOXYGEN_WARN_AS_ERROR FAIL_ON_WARNINGS)
  set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${CMAKE_CURRENT_SOURCE_DIR}/docs/reference.md)
  doxygen_add_docs(ztkdb_api_docs ${CMAKE_CURRENT_SOURCE_DIR}/include/ztkdb
                   ${CMAKE_CURRENT_SOURCE_DIR}/docs/reference.md ALL
                   COMMENT "Writing the API reference")
  install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/html/
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libztkdb-dev/api COMPONENT dev)
endif()
