# SPDX-License-Identifier: MIT
# Builds the Debian packages twice (lintian, reproducibility) and uses them from a scratch root. The packages are native Release
# builds, made in a tree of their own: the test runs in the native configuration only.
if(NOT NLS_M32 AND NOT NLS_SANITIZED AND NOT NLS_COVERAGE)
  add_test(NAME Package.DebsUnpackIntoScratchRootAndServeConsumers
           COMMAND ${CMAKE_CURRENT_LIST_DIR}/package_test.sh ${PROJECT_SOURCE_DIR}
                   ${CMAKE_BINARY_DIR}/package-test)
  set_tests_properties(Package.DebsUnpackIntoScratchRootAndServeConsumers PROPERTIES
                       TIMEOUT 1500 RUN_SERIAL TRUE)
endif()
