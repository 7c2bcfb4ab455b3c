# SPDX-License-Identifier: MIT
# Tests of the general library.
nls_add_gtest(glib_wide_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/wide_test.cpp
              MODULES glib convlib memmgr errlib)
nls_add_gtest(glib_match_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/match_test.cpp
              MODULES glib convlib memmgr errlib)
nls_add_gtest(glib_format_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/format_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/format_wide_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/format_diff_test.cpp
              MODULES glib convlib memmgr errlib)
nls_add_gtest(glib_util_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/string_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/env_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/sys_test.cpp
              MODULES glib convlib memmgr errlib
              ENV "TZ=UTC")
# Allocation failures need a failing system allocator; AddressSanitizer owns malloc.
if(NOT NLS_SANITIZED)
  nls_add_gtest(glib_alloc_failure_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/alloc_failure_test.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES glib convlib memmgr errlib)
endif()
