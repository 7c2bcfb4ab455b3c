# Debian packages (CPack's DEB generator), one per install component of cmake/Install.cmake:
#   libnlssupport1     the shared library, named after its SONAME libnlssupport.so.1
#   libnlssupport-dev  headers, static library, the unversioned libnlssupport.so link,
#                      nlssupport.pc and the CMake package; depends on libnlssupport1 of the
#                      same version
#   nlsreport          the command (linked with the static library) and its manual page
# scripts/package.sh configures a Release tree with the /usr prefix (so that the libraries land
# in the multiarch directory, e.g. /usr/lib/x86_64-linux-gnu) and runs cpack there.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME nlssupport)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "nlssupport")
set(CPACK_PACKAGE_CONTACT "nlssupport maintainers <nlssupport@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL runtime dev nlsreport)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Descriptions: the first line is the synopsis, the others the long description.
# Dependencies on the system's libraries come from dpkg-shlibdeps; the shared library gets a
# shlibs file and the ldconfig trigger.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(NLS_DEB_VERSION "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libnlssupport1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
  "National-language support library: shared library
The character-set registry (IANA names and MIBenums), error stacks with a checked
allocator, 16-bit wide strings, SQL-LIKE matching, a bounded formatter, and conversions
between text, numbers, decimals, UTF-8 and date-time values.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libnlssupport-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libnlssupport1 (= ${NLS_DEB_VERSION})")
set(CPACK_DEBIAN_DEV_DESCRIPTION
  "National-language support library: development files
The C headers, the static library, the libnlssupport.so link, the pkg-config file
nlssupport.pc and the CMake package NlsSupport.")

set(CPACK_DEBIAN_NLSREPORT_PACKAGE_NAME nlsreport)
set(CPACK_DEBIAN_NLSREPORT_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_NLSREPORT_DESCRIPTION
  "Report the code set and IANA character-set name of locales
For each locale named on its command line, nlsreport switches the process locale, reads
its code set, maps it to the preferred IANA character-set name and MIBenum, and prints
one row of a fixed-width table.")

# Manual pages are compressed in the packages only; cmake --install keeps them plain.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebManPages.cmake)

include(CPack)
