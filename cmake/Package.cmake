# Debian packages of the components (cmake/Install.cmake), made by
# scripts/package with CPack: dependencies on system libraries computed by
# dpkg-shlibdeps, versions from the project.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ztkdb)
set(CPACK_PACKAGE_VENDOR "ZTkDb")
set(CPACK_PACKAGE_CONTACT "ZTkDb developers <ztkdb@localhost>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev tool python)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://localhost/ztkdb")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libztkdb0)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "typed row-level access to the help-desk module database\n"
  "ZTkDb gives applications of a facility-management suite typed access to the\n"
  "database of its help-desk module: reports, work orders, their links, labour and\n"
  "material bookings and document links, on an embedded SQLite file or an ODBC data\n"
  "source (PostgreSQL, MariaDB). This package holds the shared library with its C++\n"
  "classes and its C interface.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libztkdb-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "libztkdb0 (= ${PROJECT_VERSION}), libsqlite3-dev, unixodbc-dev")
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEV_DESCRIPTION
  "help-desk module database access (development files)\n"
  "Headers, static library, CMake package (find_package(ZTkDb)) and pkg-config file\n"
  "of ZTkDb, the typed row-level access to the help-desk module database.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ztk)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION database)
set(CPACK_COMPONENT_TOOL_DESCRIPTION
  "the help-desk module database from a terminal\n"
  "ztk lists, shows, adds, changes, closes and deletes reports, work orders,\n"
  "bookings and document links of the help-desk module database, through the ZTkDb\n"
  "library as an application would, with guards that keep the data consistent.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-ztkdb)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "libztkdb0 (>= ${PROJECT_VERSION}), python3")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION
  "help-desk module database access from Python\n"
  "The ztkdb module reaches the ZTkDb library through its C interface (ctypes):\n"
  "records and lists as Python objects, dates as datetime, money as Decimal.")

include(CPack)
