# SPDX-License-Identifier: MIT
# Failure paths of the conversion library that the feature tests leave unexercised (found with
# scripts/coverage.sh).
nls_add_gtest(convlib_coverage_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/coverage_paths_test.cpp
              MODULES convlib memmgr errlib)
