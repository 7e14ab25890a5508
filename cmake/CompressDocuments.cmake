# Compresses manual pages and changelogs of packages, as Debian has them. CPack runs this between
# staging and packing.
file(GLOB_RECURSE files ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(file IN LISTS files)
  if(file MATCHES "/share/man/|/share/doc/[^/]+/changelog[^/]*$")
    execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
