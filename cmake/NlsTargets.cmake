# SPDX-License-Identifier: MIT
# Helpers shared by the library, the command and the tests.

# Warnings are errors in the project's own code (not in GoogleTest's).
function(nls_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()

# nls_module(<dir> [EXCLUDE file...]): an object library nls_<dir> made of every .cpp in <dir>/.
# New source files are picked up at the next build (CONFIGURE_DEPENDS).
function(nls_module dir)
  cmake_parse_arguments(M "" "" "EXCLUDE" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${dir}/*.cpp)
  foreach(ex IN LISTS M_EXCLUDE)
    list(REMOVE_ITEM srcs ${PROJECT_SOURCE_DIR}/${dir}/${ex})
  endforeach()
  if(NOT srcs)
    # A module without sources yet still gives an (empty) object library.
    set(srcs ${PROJECT_SOURCE_DIR}/cmake/empty.cpp)
  endif()
  add_library(nls_${dir} OBJECT ${srcs})
  target_include_directories(nls_${dir} PUBLIC ${NLS_INCLUDE_DIRS} ${PROJECT_SOURCE_DIR})
  nls_warnings(nls_${dir})
  set(NLS_MODULES ${NLS_MODULES} ${dir} PARENT_SCOPE)
endfunction()
