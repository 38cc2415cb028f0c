# Debian packages of the components (cmake/Install.cmake), made by
# scripts/package with CPack: dependencies on system libraries computed by
# dpkg-shlibdeps, versions from the project.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ztkdb)
set(CPACK_PACKAGE_VENDOR "ZTkDb")
set(CPACK_PACKAGE_CONTACT "${ZTKDB_MAINTAINER}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev tool python)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${ZTKDB_HOMEPAGE}")
# Shipped binaries carry no debugging information.
set(CPACK_STRIP_FILES ON)

# Descriptions: the synopsis, then the long text; each one string, so that
# no list separator ends up in the control file.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libztkdb0)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
  "typed row-level access to the help-desk module database
ZTkDb gives applications of a facility-management suite typed access to
the database of its help-desk module: reports, work orders, their links,
labour and material bookings and document links, on an embedded SQLite
file or an ODBC data source (PostgreSQL, MariaDB). This package holds the
shared library with its C++ classes and its C interface.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libztkdb-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
# What the static library and `pkg-config --static` link besides it.
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS
  "libztkdb0 (= ${PROJECT_VERSION}), libsqlite3-dev, unixodbc-dev, libltdl-dev")
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEV_DESCRIPTION
  "help-desk module database access (development files)
Headers, static library, CMake package (find_package(ZTkDb)), pkg-config file
and API reference of ZTkDb, the typed row-level access to the help-desk module
database of a facility-management suite.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ztk)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION database)
# ztk uses the library of libztkdb0, including internals of this very
# version; dpkg-shlibdeps finds that library in the build tree.
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "libztkdb0 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR})
set(CPACK_COMPONENT_TOOL_DESCRIPTION
  "help-desk module database from a terminal
ztk lists, shows, adds, changes, closes and deletes reports, work orders,
bookings and document links of the help-desk module database, through the ZTkDb
library as an application would, with guards that keep the data consistent.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-ztkdb)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "libztkdb0 (>= ${PROJECT_VERSION}), python3")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION
  "help-desk module database access from Python
The ztkdb module reaches the ZTkDb library through its C interface (ctypes):
records and lists as Python classes, dates as datetime, money as Decimal.")

include(CPack)
