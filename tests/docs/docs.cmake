# SPDX-License-Identifier: MIT
# Builds the HTML reference of the public headers with Doxygen; any warning (an undocumented
# function, record field, constant or parameter, a broken reference) fails the test. The
# reference does not depend on the configuration: the test runs in the native one only.
if(NOT NLS_M32 AND NOT NLS_SANITIZED AND NOT NLS_COVERAGE)
  add_test(NAME Docs.ReferenceBuildsWithoutWarnings
           COMMAND ${PROJECT_SOURCE_DIR}/scripts/docs.sh ${CMAKE_BINARY_DIR}/docs-test)
endif()

# The C and C++ samples of README.md compile against the public headers (every configuration).
add_test(NAME Docs.ReadmeSamplesCompileAsC11
         COMMAND ${CMAKE_CURRENT_LIST_DIR}/readme_samples_test.sh ${PROJECT_SOURCE_DIR}
                 ${NLS_VERSION_INCLUDE_DIR} ${CMAKE_C_COMPILER} ${CMAKE_CXX_COMPILER}
                 "${NLS_CONSUMER_FLAGS}")

# The licence and its identifier in every source, header, script and CMake file.
if(NOT NLS_M32 AND NOT NLS_SANITIZED AND NOT NLS_COVERAGE)
  add_test(NAME Docs.EveryFileCarriesTheLicenceIdentifier
           COMMAND ${CMAKE_CURRENT_LIST_DIR}/license_test.sh ${PROJECT_SOURCE_DIR})
endif()
