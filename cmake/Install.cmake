# SPDX-License-Identifier: MIT
# Installation: the command and its manual page, both libraries, the public headers under
# include/nlssupport/ (included as <nlssupport/convlib.h>, with include/ on the path), the
# licence, a CMake package (find_package(NlsSupport): NlsSupport::nlssupport, the
# shared library, and NlsSupport::nlssupport_static) and a pkg-config file (nlssupport.pc).
# Three install components, one per Debian package (debian/*.install take the same files):
#   runtime    the shared library libnlssupport.so.1                  -> libnlssupport1
#   dev        headers, static library, libnlssupport.so link, CMake
#              package and pkg-config file                            -> libnlssupport-dev
#   nlsreport  the command and its manual page                        -> nlsreport
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(NLS_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/NlsSupport)

foreach(lib nlssupport_static nlssupport_shared)
  target_include_directories(${lib} PUBLIC
    "$<BUILD_INTERFACE:${NLS_INCLUDE_DIRS}>"
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endforeach()
set_target_properties(nlssupport_shared PROPERTIES EXPORT_NAME nlssupport)
set_target_properties(nlssupport_static PROPERTIES EXPORT_NAME nlssupport_static)

install(TARGETS nlsreport RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT nlsreport)
install(FILES ${PROJECT_SOURCE_DIR}/nls/nlsreport.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1
        COMPONENT nlsreport)

install(TARGETS nlssupport_shared nlssupport_static EXPORT NlsSupportTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/nlssupport ${NLS_VERSION_INCLUDE_DIR}/nlssupport
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev
  FILES_MATCHING PATTERN "*.h" PATTERN "*.hpp")
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT dev)

install(EXPORT NlsSupportTargets NAMESPACE NlsSupport:: DESTINATION ${NLS_INSTALL_CMAKEDIR}
        COMPONENT dev)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/NlsSupportConfig.cmake.in
  ${PROJECT_BINARY_DIR}/NlsSupportConfig.cmake INSTALL_DESTINATION ${NLS_INSTALL_CMAKEDIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/NlsSupportConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/NlsSupportConfig.cmake
              ${PROJECT_BINARY_DIR}/NlsSupportConfigVersion.cmake
        DESTINATION ${NLS_INSTALL_CMAKEDIR} COMPONENT dev)

# The pkg-config file finds its prefix from its own place, so that an installation can be moved
# (or made with cmake --install --prefix) without editing it; distribution packages
# (NLS_PKGCONFIG_ABSOLUTE) write the configured prefix instead.
if(NLS_PKGCONFIG_ABSOLUTE)
  set(NLS_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH NLS_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  string(REGEX REPLACE "/$" "" NLS_PC_TO_PREFIX "${NLS_PC_TO_PREFIX}")
  set(NLS_PC_PREFIX "\${pcfiledir}/${NLS_PC_TO_PREFIX}")
endif()
configure_file(${PROJECT_SOURCE_DIR}/cmake/nlssupport.pc.in ${PROJECT_BINARY_DIR}/nlssupport.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/nlssupport.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT dev)
