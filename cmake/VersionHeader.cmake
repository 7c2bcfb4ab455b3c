# SPDX-License-Identifier: MIT
# Writes <NLS_VERSION_INCLUDE_DIR>/nlssupport/version.h from cmake/version.h.in for the version
# NLS_VERSION ("MAJOR.MINOR.PATCH"). Included by the top-level CMakeLists.txt with the project's
# version; run as a script (cmake -DNLS_VERSION=... -DNLS_VERSION_INCLUDE_DIR=... -P) by
# scripts/docs.sh, which documents the header without a build tree.
string(REGEX MATCH "^([0-9]+)\\.([0-9]+)\\.([0-9]+)$" _nls_match "${NLS_VERSION}")
if(NOT _nls_match)
  message(FATAL_ERROR "NLS_VERSION must be MAJOR.MINOR.PATCH, got '${NLS_VERSION}'")
endif()
set(NLS_VERSION_MAJOR ${CMAKE_MATCH_1})
set(NLS_VERSION_MINOR ${CMAKE_MATCH_2})
set(NLS_VERSION_PATCH ${CMAKE_MATCH_3})
configure_file(${CMAKE_CURRENT_LIST_DIR}/version.h.in
               ${NLS_VERSION_INCLUDE_DIR}/nlssupport/version.h @ONLY)
