# SPDX-License-Identifier: MIT
# The code-page services and the nlsreport command. Both executables generate the locales they
# need once per build tree (tests/nls-test-locales beside them) and point LOCPATH at them.
nls_add_gtest(koranls_test
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/koranls_test.cpp ${CMAKE_CURRENT_LIST_DIR}/test_locales.cpp
  MODULES nls ianacs errlib memmgr)

nls_add_gtest(nlsreport_e2e_test
  SOURCES ${CMAKE_CURRENT_LIST_DIR}/nlsreport_test.cpp ${CMAKE_CURRENT_LIST_DIR}/test_locales.cpp
  ENV "NLSREPORT=$<TARGET_FILE:nlsreport>")
add_dependencies(nlsreport_e2e_test nlsreport)
