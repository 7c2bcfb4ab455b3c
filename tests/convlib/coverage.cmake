# SPDX-License-Identifier: MIT
# Failure paths of the conversion library that the feature tests leave unexercised (found with
# scripts/coverage.sh).
nls_add_gtest(convlib_coverage_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/coverage_paths_test.cpp
              MODULES convlib memmgr errlib)

# Conditions that the feature tests leave on one side only; one test generates a locale with
# "," as its decimal point, as the code-page tests do.
nls_add_gtest(convlib_branch_paths_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/branch_paths_test.cpp
                      ${PROJECT_SOURCE_DIR}/tests/nls/test_locales.cpp
              MODULES convlib memmgr errlib)
