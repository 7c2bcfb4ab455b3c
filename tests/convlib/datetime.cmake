# SPDX-License-Identifier: MIT
# Date-time values, formatting, parsing and ODBC text.
nls_add_gtest(convlib_datetime_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/dt_calendar_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/dt_format_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/dt_parse_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/dt_odbc_test.cpp
              MODULES convlib memmgr errlib)

# Allocation failures of the parser's temporary copy; ASan owns malloc, so not under a sanitizer (NLS_SANITIZED).
if(NOT NLS_SANITIZED)
  nls_add_gtest(convlib_datetime_alloc_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/dt_parse_alloc_test.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES convlib memmgr errlib)
endif()
