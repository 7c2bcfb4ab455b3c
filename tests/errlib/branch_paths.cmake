# SPDX-License-Identifier: MIT
# Conditions of the error library that the feature tests leave on one side only (found with
# scripts/coverage.sh).
nls_add_gtest(errlib_branch_paths_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/branch_paths_test.cpp
              MODULES errlib memmgr)
