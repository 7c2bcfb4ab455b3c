# SPDX-License-Identifier: MIT
# Helpers shared by the library, the command and the tests.

# Warnings are errors in the project's own code (not in GoogleTest's).
function(nls_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Werror)
endfunction()

# nls_module(<dir> [USES <module>...] [EXCLUDE <file>...]): an object library nls_<dir> made of
# every .cpp in <dir>/ (new files are picked up at the next build: CONFIGURE_DEPENDS), appended
# to NLS_MODULES. The module's sources see the public headers, their own folder (through
# quoted includes) and, of the modules named by USES, the internal helpers each one publishes
# to its users in <module>/export/; no other module's private headers. USES is the module's
# place in the link graph: it is kept in the target's NLS_USES property, and the layering test
# checks that the module's objects call no other module.
function(nls_module dir)
  cmake_parse_arguments(M "" "" "USES;EXCLUDE" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${dir}/*.cpp)
  foreach(ex IN LISTS M_EXCLUDE)
    list(REMOVE_ITEM srcs ${PROJECT_SOURCE_DIR}/${dir}/${ex})
  endforeach()
  add_library(nls_${dir} OBJECT ${srcs})
  target_include_directories(nls_${dir} PRIVATE ${NLS_INCLUDE_DIRS})
  if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/${dir}/export)
    target_include_directories(nls_${dir} PUBLIC ${PROJECT_SOURCE_DIR}/${dir}/export)
  endif()
  # The used modules' export folders, read when the build is generated: the link graph has the
  # cycle memmgr <-> errlib, which target_link_libraries does not allow between object libraries.
  foreach(used IN LISTS M_USES)
    target_include_directories(nls_${dir} PRIVATE
      $<TARGET_PROPERTY:nls_${used},INTERFACE_INCLUDE_DIRECTORIES>)
  endforeach()
  set_target_properties(nls_${dir} PROPERTIES NLS_USES "${M_USES}")
  nls_warnings(nls_${dir})
  set(NLS_MODULES ${NLS_MODULES} ${dir} PARENT_SCOPE)
endfunction()
