# SPDX-License-Identifier: MIT
# Inputs found by the fuzz targets in fuzz/, kept as regression cases.
nls_add_gtest(convlib_fuzz_regress_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/fuzz_regress_test.cpp
              MODULES convlib memmgr errlib)
