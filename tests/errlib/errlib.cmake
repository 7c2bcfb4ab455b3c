# SPDX-License-Identifier: MIT
# The error library's tests: records and stacks, record access and stack queries, and the
# allocation failures of every allocation site (with the failing allocator; not under the
# sanitizers, which own malloc).
nls_add_gtest(errlib_test
              SOURCES ${CMAKE_CURRENT_LIST_DIR}/errstack_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/errrecord_test.cpp
                      ${CMAKE_CURRENT_LIST_DIR}/errquery_test.cpp
              MODULES errlib memmgr)

if(NOT NLS_SANITIZED)
  nls_add_gtest(errlib_alloc_failure_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/errlib_alloc_failure_test.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES errlib memmgr)
  # The same executable under valgrind, on the native build where valgrind runs.
  find_program(NLS_VALGRIND valgrind)
  if(NLS_VALGRIND AND NOT NLS_M32)
    add_test(NAME errlib_alloc_failure_test.valgrind
             COMMAND ${NLS_VALGRIND} --soname-synonyms=somalloc=nouserintercepts
                     --leak-check=full --error-exitcode=1 $<TARGET_FILE:errlib_alloc_failure_test>)
  endif()
endif()
