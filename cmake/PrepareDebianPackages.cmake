# Does to the files of packages what Debian asks for: compresses manual pages and changelogs, and
# takes out of programs and libraries which compiler they come from. CPack runs this between staging
# and packing.
file(GLOB_RECURSE files ${CPACK_TEMPORARY_DIRECTORY}/*)
foreach(file IN LISTS files)
  if(IS_SYMLINK ${file})
    continue()
  elseif(file MATCHES "/share/man/|/share/doc/[^/]+/changelog[^/]*$")
    execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
  elseif(file MATCHES "/bin/[^/]+$|\\.so\\.[^/]+$")
    execute_process(COMMAND objcopy --remove-section=.comment --remove-section=.note ${file}
      COMMAND_ERROR_IS_FATAL ANY)
  endif()
endforeach()
