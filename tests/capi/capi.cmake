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

# GLib's <glib.h> and every nlssupport header in one C program, with GLib's include paths before
# nlssupport's and after them. GLib's development files are there for the machine's own
# architecture only, so the 32-bit configuration leaves the test out; without them the test
# fails and names the package.
if(NOT NLS_M32)
  find_package(PkgConfig QUIET)
  if(PKG_CONFIG_FOUND)
    pkg_check_modules(NLS_GLIB QUIET IMPORTED_TARGET glib-2.0)
  endif()
  if(TARGET PkgConfig::NLS_GLIB)
    foreach(order GLibFirst NlsSupportFirst)
      set(target glib_coexist_${order})
      add_executable(${target} ${CMAKE_CURRENT_LIST_DIR}/glib_coexist.c)
      set_target_properties(${target} PROPERTIES C_STANDARD 11 C_EXTENSIONS OFF)
      target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
      if(order STREQUAL GLibFirst)
        target_link_libraries(${target} PRIVATE PkgConfig::NLS_GLIB nlssupport_shared)
      else()
        target_link_libraries(${target} PRIVATE nlssupport_shared PkgConfig::NLS_GLIB)
      endif()
      add_test(NAME CApi.GLibAndNlsSupportHeadersCoexist${order} COMMAND ${target})
    endforeach()
  else()
    add_test(NAME CApi.GLibAndNlsSupportHeadersCoexist
             COMMAND ${CMAKE_COMMAND} -E echo "GLib's development files are missing: install libglib2.0-dev")
    set_tests_properties(CApi.GLibAndNlsSupportHeadersCoexist PROPERTIES WILL_FAIL TRUE)
  endif()
endif()
