# SPDX-License-Identifier: MIT
# The source tree used by a C-only parent project with add_subdirectory. A native build of its
# own, so the test runs in the native configuration only.
if(NOT NLS_M32 AND NOT NLS_SANITIZED AND NOT NLS_COVERAGE)
  add_test(NAME Subproject.COnlyParentAddsTreeAndLinksBothLibraries
           COMMAND ${CMAKE_CURRENT_LIST_DIR}/subproject_test.sh ${PROJECT_SOURCE_DIR}
                   ${CMAKE_BINARY_DIR}/subproject-test ${CMAKE_C_COMPILER} ${CMAKE_CXX_COMPILER})
  set_tests_properties(Subproject.COnlyParentAddsTreeAndLinksBothLibraries PROPERTIES
                       TIMEOUT 900 RUN_SERIAL TRUE)
endif()
