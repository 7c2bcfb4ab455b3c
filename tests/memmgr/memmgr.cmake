# SPDX-License-Identifier: MIT
# The checked allocator's tests. The allocation-failure tests and the self-test of the failing
# allocator they use replace malloc, so they are not built under the sanitizers, which own it.
nls_add_gtest(memmgr_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/mmflat_test.cpp
              MODULES memmgr errlib)

if(NOT NLS_SANITIZED)
  nls_add_gtest(alloc_interpose_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/alloc_interpose_test.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES)
endif()

if(NOT NLS_SANITIZED)
  nls_add_gtest(memmgr_alloc_failure_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/mmflat_alloc_failure_test.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES memmgr errlib)
  # The same executable under valgrind, on the native build where valgrind runs.
  find_program(NLS_VALGRIND valgrind)
  if(NLS_VALGRIND AND NOT NLS_M32)
    add_test(NAME memmgr_alloc_failure_test.valgrind
             COMMAND ${NLS_VALGRIND} --soname-synonyms=somalloc=nouserintercepts
                     --leak-check=full --error-exitcode=1 $<TARGET_FILE:memmgr_alloc_failure_test>)
  endif()
endif()
