# Does to the packages what CPack has no setting for. CPack runs this behind packing.
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_XMLDOM_SOURCE_DATE_EPOCH})
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(contents ${package}.contents)
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${contents} COMMAND_ERROR_IS_FATAL ANY)

  # A trigger renews the linker's cache.
  file(REMOVE ${contents}/DEBIAN/postinst ${contents}/DEBIAN/postrm)

  # Libraries and what builds with them can be installed for several architectures side by side; the
  # tool and the documents of one architecture serve all. CPack knows this field from CMake 3.31 on. In Debian,
  # packages of debugging information are of no other type than the others.
  file(READ ${contents}/DEBIAN/control control)
  string(REPLACE "Package-Type: ddeb\n" "" control "${control}")
  if(package MATCHES "/(xmldom|libxmldom-doc)_[^/]*$")
    string(PREPEND control "Multi-Arch: foreign\n")
  elseif(package MATCHES "/libxmldom[^/]*$")
    string(PREPEND control "Multi-Arch: same\n")
  endif()
  if(NOT package MATCHES "/xmldom_[^/]*$")
    string(PREPEND control "Source: xmldom\n")  # all are of one source
  endif()
  file(WRITE ${contents}/DEBIAN/control "${control}")

  if(EXISTS ${contents}/DEBIAN/shlibs)
    string(REGEX MATCH "Package: ([^\n]*)" name "${control}")
    execute_process(
      COMMAND dpkg-gensymbols -p${CMAKE_MATCH_1} -P${contents} -v${CPACK_PACKAGE_VERSION}
        -I${CPACK_XMLDOM_SYMBOLS} -O${contents}/DEBIAN/symbols -c4
      COMMAND_ERROR_IS_FATAL ANY)
  endif()

  # The files of debugging information are no programs, and their list of sums has the folder of the
  # build in it.
  if(package MATCHES "/([^/]*)-dbgsym_[^/]*$")
    file(MAKE_DIRECTORY ${contents}/usr/share/doc)
    file(CREATE_LINK ${CMAKE_MATCH_1} ${contents}/usr/share/doc/${CMAKE_MATCH_1}-dbgsym SYMBOLIC)
    file(GLOB_RECURSE files RELATIVE ${contents} ${contents}/usr/lib/debug/*.debug)
    set(sums "")
    foreach(file IN LISTS files)
      execute_process(COMMAND chmod -x ${contents}/${file} COMMAND_ERROR_IS_FATAL ANY)
      file(MD5 ${contents}/${file} sum)
      string(APPEND sums "${sum}  ${file}\n")
    endforeach()
    file(WRITE ${contents}/DEBIAN/md5sums "${sums}")
  endif()

  # Neither the umask nor the date of the build shows.
  execute_process(COMMAND chmod -R u=rwX,go=rX ${contents} COMMAND_ERROR_IS_FATAL ANY)
  execute_process(
    COMMAND find ${contents} -exec
      touch --no-dereference --date=@${CPACK_XMLDOM_SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${contents} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${contents})
endforeach()
