# SPDX-License-Identifier: MIT
# The modules' layering, enforced:
#   - each module's objects call only their own module and the modules it USES (nls_module in
#     the top-level CMakeLists.txt): the undefined symbols of its objects are mapped to modules;
#   - a module cannot include another module's private header: a probe compiled with the
#     general library's include path fails on the conversion library's private header, and
#     compiles with what the conversion library publishes to its users.
set(NLS_LAYERING_ARGS)
foreach(mod IN LISTS NLS_MODULES)
  get_target_property(uses nls_${mod} NLS_USES)
  string(REPLACE ";" "," uses "${uses}")
  list(APPEND NLS_LAYERING_ARGS "${mod}:${uses}:$<JOIN:$<TARGET_OBJECTS:nls_${mod}>,,>")
endforeach()
add_test(NAME Layering.ModulesCallOnlyTheModulesTheyUse
         COMMAND ${CMAKE_CURRENT_LIST_DIR}/layering_test.sh ${NLS_LAYERING_ARGS})

# The probes are built by the tests only (not by the default build).
foreach(probe private_header export_header)
  add_library(layering_probe_${probe} OBJECT EXCLUDE_FROM_ALL
              ${CMAKE_CURRENT_LIST_DIR}/probe_${probe}.cpp)
  target_include_directories(layering_probe_${probe} PRIVATE
                             $<TARGET_PROPERTY:nls_glib,INCLUDE_DIRECTORIES>)
  add_test(NAME Layering.GeneralLibraryProbeOf${probe}
           COMMAND ${CMAKE_COMMAND} --build ${CMAKE_BINARY_DIR} --target layering_probe_${probe})
endforeach()
set_tests_properties(Layering.GeneralLibraryProbeOfexport_header PROPERTIES
                     RESOURCE_LOCK layering_probes)
set_tests_properties(Layering.GeneralLibraryProbeOfprivate_header PROPERTIES
                     RESOURCE_LOCK layering_probes
                     PASS_REGULAR_EXPRESSION "convlib/datetime_internal.h: No such file")
