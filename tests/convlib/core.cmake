# SPDX-License-Identifier: MIT
# Conversion library core: status messages, narrowing, number text, integer and floating text,
# trimming and UTF-8.
nls_add_gtest(convlib_core_test
  SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/core_status_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_narrow_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_numtext_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_fieldscan_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_numconv_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_dbltext_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_utf8_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_utf8_string_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_numread_test.cpp
    ${CMAKE_CURRENT_LIST_DIR}/core_trim_test.cpp
  MODULES convlib memmgr errlib)
