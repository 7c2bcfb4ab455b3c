# SPDX-License-Identifier: MIT
# Binary text: byte strings to and from hexadecimal text.
nls_add_gtest(convlib_bintext_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/bin_text_test.cpp
              MODULES convlib memmgr errlib)

# Allocation failures of the temporary copy taken for overlapping buffers. The executable
# replaces the system allocator, which AddressSanitizer owns: not built under a sanitizer (NLS_SANITIZED).
if(NOT NLS_SANITIZED)
  nls_add_gtest(convlib_bintext_alloc_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/bin_alloc_failure_test.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES convlib memmgr errlib)
endif()
