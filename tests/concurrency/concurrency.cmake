# SPDX-License-Identifier: MIT
# Concurrency: every reentrant routine family from eight threads at once against the answers of
# one thread, error stacks kept and handed over between threads, and the code-page services under
# per-thread locales (generated like the code-page tests' locales). The tests carry the folder's
# label, "concurrency": the ThreadSanitizer build (NLS_TSAN) builds and runs these alone. No
# valgrind run is declared for the executable; none could work in the ThreadSanitizer build.
find_package(Threads REQUIRED)

nls_add_gtest(concurrency_test
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/reentrancy_cases.cpp
          ${CMAKE_CURRENT_LIST_DIR}/cases_general.cpp
          ${CMAKE_CURRENT_LIST_DIR}/cases_numbers.cpp
          ${CMAKE_CURRENT_LIST_DIR}/cases_datetime.cpp
          ${CMAKE_CURRENT_LIST_DIR}/cases_errors.cpp
          ${CMAKE_CURRENT_LIST_DIR}/reentrancy_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/error_stack_threads_test.cpp
          ${CMAKE_CURRENT_LIST_DIR}/thread_locale_test.cpp
          ${PROJECT_SOURCE_DIR}/tests/nls/test_locales.cpp
  MODULES glib convlib nls ianacs errlib memmgr
  LIBS Threads::Threads
  ENV "LSAN_OPTIONS=suppressions=${CMAKE_CURRENT_LIST_DIR}/lsan.supp")
