# SPDX-License-Identifier: MIT
# cmake -DPROGRAM=<exe> -DEXPECTED=<file> -DACTUAL=<file> -P run_example.cmake
# Runs an example program, fails when it exits with a non-zero status, and compares its standard
# output byte for byte with the expected file, printing a diff when they differ.

foreach(var PROGRAM EXPECTED ACTUAL)
  if(NOT DEFINED ${var})
    message(FATAL_ERROR "run_example.cmake: ${var} is not set")
  endif()
endforeach()

execute_process(COMMAND ${PROGRAM}
                OUTPUT_FILE ${ACTUAL}
                ERROR_VARIABLE errors
                RESULT_VARIABLE status)
if(NOT status STREQUAL "0")
  file(READ ${ACTUAL} output)
  message(FATAL_ERROR "${PROGRAM} exited with ${status}\n--- stdout:\n${output}--- stderr:\n${errors}")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${EXPECTED} ${ACTUAL}
                RESULT_VARIABLE different)
if(different)
  # The diff goes straight to standard output, where CTest shows it with --output-on-failure.
  find_program(DIFF diff)
  if(DIFF)
    execute_process(COMMAND ${DIFF} -u ${EXPECTED} ${ACTUAL})
  else()
    execute_process(COMMAND ${CMAKE_COMMAND} -E cat ${ACTUAL})
  endif()
  message(FATAL_ERROR "output of ${PROGRAM} differs from ${EXPECTED} (actual output in ${ACTUAL})")
endif()
message(STATUS "output matches ${EXPECTED}")
