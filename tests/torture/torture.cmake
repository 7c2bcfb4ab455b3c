# SPDX-License-Identifier: MIT
# Allocation torture: every allocating public routine is run once to count its allocations, then
# once per allocation with that allocation failing (alone, from there on, and by its size), through
# a failing system allocator (tests/support/alloc_interpose.cpp). The executable replaces malloc,
# which AddressSanitizer owns: not built under a sanitizer (NLS_SANITIZED).
if(NOT NLS_SANITIZED)
  nls_add_gtest(alloc_torture_test
                SOURCES ${CMAKE_CURRENT_LIST_DIR}/alloc_torture_test.cpp
                        ${CMAKE_CURRENT_LIST_DIR}/alloc_torture_rows.cpp
                        ${PROJECT_SOURCE_DIR}/tests/support/alloc_interpose.cpp
                MODULES glib convlib memmgr errlib)
  # The same executable under valgrind (native build only): no invalid access and no leak on any
  # failure path. The replaced malloc is left in place (nouserintercepts), so valgrind checks the
  # accesses and the final leak report covers the whole run.
  find_program(NLS_VALGRIND valgrind)
  if(NLS_VALGRIND AND NOT NLS_M32)
    add_test(NAME alloc_torture_test.valgrind
             COMMAND ${NLS_VALGRIND} --soname-synonyms=somalloc=nouserintercepts
                     --leak-check=full --error-exitcode=1 $<TARGET_FILE:alloc_torture_test>)
  endif()
endif()
