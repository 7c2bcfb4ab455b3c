# SPDX-License-Identifier: MIT
# The C++ layer (<nlssupport/nlssupport.hpp>): every wrapper against the C function it wraps, the
# ownership of stacks, errors and blocks, the error category, and the compile-time traits.
nls_add_gtest(cpp_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/traits_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/status_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/ownership_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/format_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/conversion_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/text_test.cpp
                      ${PROJECT_SOURCE_DIR}/tests/nls/test_locales.cpp
              MODULES errlib memmgr ianacs nls glib convlib)
# Allocation counts and failures need a failing system allocator; AddressSanitizer owns malloc.
if(NOT NLS_SANITIZED)
  nls_add_gtest(cpp_alloc_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/alloc_test.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES errlib memmgr ianacs nls glib convlib)
endif()
