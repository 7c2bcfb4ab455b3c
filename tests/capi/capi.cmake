# SPDX-License-Identifier: MIT
# The C view of the library: a strict C11 program linked against the shared library, and the
# public headers compiled as C++.
add_executable(capi_test ${CMAKE_CURRENT_LIST_DIR}/capi_test.c ${CMAKE_CURRENT_LIST_DIR}/headers.cpp)
set_target_properties(capi_test PROPERTIES C_STANDARD 11 C_EXTENSIONS OFF)
target_compile_options(capi_test PRIVATE -Wall -Wextra -Werror -pedantic)
target_link_libraries(capi_test PRIVATE nlssupport_shared)
add_test(NAME CApi.HeadersCompileAsC11AndLinkAgainstSharedLibrary COMMAND capi_test)

add_test(NAME CApi.SharedLibraryHasSonameOnlyPrefixedSymbolsAndIdentLines
         COMMAND ${CMAKE_CURRENT_LIST_DIR}/check_library.sh $<TARGET_FILE:nlssupport_shared>
                 ${PROJECT_SOURCE_DIR})
