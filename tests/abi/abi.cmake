# SPDX-License-Identifier: MIT
# The shared library against its committed ABI baseline (libabigail). The baseline describes the
# native x86_64 build with debugging information, so the test runs in that configuration only.
if(NOT NLS_M32 AND NOT NLS_SANITIZED AND NOT NLS_COVERAGE)
  add_test(NAME Abi.SharedLibraryKeepsBaselineAbi
           COMMAND ${CMAKE_CURRENT_LIST_DIR}/abi_check.sh ${PROJECT_SOURCE_DIR}
                   ${NLS_VERSION_INCLUDE_DIR}/nlssupport $<TARGET_FILE:nlssupport_shared>
                   ${CMAKE_BINARY_DIR}/abi-test)
endif()
