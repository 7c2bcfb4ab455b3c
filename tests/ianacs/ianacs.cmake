# SPDX-License-Identifier: MIT
# The character-set registry: table contents and order, the lookups and the order checks.
nls_add_gtest(ianacs_test
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/tables_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/lookup_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/checktab_test.cpp
  MODULES ianacs)
