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
install(FILES python/ztkdb.py DESTINATION lib/python3/dist-packages COMPONENT python)
