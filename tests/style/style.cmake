# SPDX-License-Identifier: MIT
# The style and static checks of the library sources (scripts/lint.sh): clang-format, one
# comment style, clang-tidy with the compile commands of this build tree. They do not depend on
# the configuration: the native one runs them.
if(NOT NLS_M32 AND NOT NLS_SANITIZED AND NOT NLS_COVERAGE)
  add_test(NAME Style.LibrarySourcesPassClangFormatAndClangTidy
           COMMAND ${PROJECT_SOURCE_DIR}/scripts/lint.sh ${CMAKE_BINARY_DIR})
  set_tests_properties(Style.LibrarySourcesPassClangFormatAndClangTidy PROPERTIES TIMEOUT 1200)
endif()
