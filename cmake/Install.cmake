# Install: the shared and the static library, the public headers, a CMake
# package (find_package(ZTkDb) -> ZTkDb::ztkdb, ZTkDb::ztkdb_static) and a
# pkg-config file; the ztk tool with its manual page and bash completion
# (both written by the tool itself), the schema files, the Python module.
# Components follow the Debian packages made of them (cmake/Package.cmake):
# runtime (libztkdb0), dev (libztkdb-dev), tool (ztk), python (python3-ztkdb).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
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
configure_file(cmake/ztkdb.pc.in ${CMAKE_CURRENT_BINARY_DIR}/ztkdb.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ztkdb.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT dev)

# ztk links the library statically: it needs no search path at run time.
install(TARGETS ztk RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
add_custom_command(OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/ztk.1 ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash
  COMMAND ztk man > ${CMAKE_CURRENT_BINARY_DIR}/ztk.1
  COMMAND ztk completion > ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash
  DEPENDS ztk COMMENT "Writing the manual page and the bash completion of ztk")
add_custom_target(ztk_docs ALL DEPENDS ${CMAKE_CURRENT_BINARY_DIR}/ztk.1
                                       ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ztk.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
  COMPONENT tool)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ztk.bash
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ztk COMPONENT tool)
install(FILES schema/sqlite.sql schema/postgresql.sql schema/mariadb.sql
  DESTINATION ${CMAKE_INSTALL_DATADIR}/ztkdb/schema COMPONENT tool)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT tool)

# The Python module: beside the installed tree, and where the system's
# python3 finds it.
install(FILES python/ztkdb.py DESTINATION ${CMAKE_INSTALL_DATADIR}/ztkdb/python COMPONENT python)
install(FILES python/ztkdb.py python/ztkdb.pyi DESTINATION lib/python3/dist-packages
  COMPONENT python)

# The API reference from the public headers' contracts (scripts/package).
option(ZTKDB_BUILD_DOCS "Build the API reference with Doxygen" OFF)
if(ZTKDB_BUILD_DOCS)
  find_package(Doxygen REQUIRED)
  set(DOXYGEN_PROJECT_NAME "ZTkDb")
  set(DOXYGEN_PROJECT_BRIEF "Typed row-level access to the help-desk module database")
  set(DOXYGEN_EXTRACT_ALL YES)
  set(DOXYGEN_EXCLUDE_SYMBOLS "detail" "ZTKDB_*")
  set(DOXYGEN_GENERATE_LATEX NO)
  set(DOXYGEN_QUIET YES)
  set(DOXYGEN_WARN_IF_UNDOCUMENTED NO)
  set(DOXYGEN_USE_MDFILE_AS_MAINPAGE ${CMAKE_CURRENT_SOURCE_DIR}/README.md)
  doxygen_add_docs(ztkdb_api_docs ${CMAKE_CURRENT_SOURCE_DIR}/include/ztkdb
                   ${CMAKE_CURRENT_SOURCE_DIR}/README.md ALL
                   COMMENT "Writing the API reference")
  install(DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/html/
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/libztkdb-dev/api COMPONENT dev)
endif()
