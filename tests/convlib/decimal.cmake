# SPDX-License-Identifier: MIT
# Decimal values: number text to packed decimals and back, decimals and the binary number types,
# and the self-describing packed layout.
nls_add_gtest(convlib_decimal_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/dec_string_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/dec_numbers_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/dec_qlxbcd_test.cpp
              MODULES convlib memmgr errlib)
