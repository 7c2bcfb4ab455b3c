# Run by CPack after it has staged the files of the packages and before it builds them: Debian
# ships manual pages compressed with gzip -9n (no file name or time stamp inside).
file(GLOB_RECURSE NLS_MAN_PAGES "${CPACK_TEMPORARY_DIRECTORY}/*.[1-9]")
list(FILTER NLS_MAN_PAGES INCLUDE REGEX "/share/man/man[1-9]/[^/]+$")
foreach(page IN LISTS NLS_MAN_PAGES)
  execute_process(COMMAND gzip -9nf "${page}" RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "gzip failed on ${page}")
  endif()
endforeach()
