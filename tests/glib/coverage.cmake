# SPDX-License-Identifier: MIT
# Failure paths of the formatter that the feature tests leave unexercised (found with
# scripts/coverage.sh).
nls_add_gtest(glib_coverage_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/coverage_format_test.cpp
              MODULES glib convlib memmgr errlib)
