# Does to the packages what CPack has no setting for. CPack runs this behind packing.
set(ENV{SOURCE_DATE_EPOCH} ${CPACK_XMLDOM_SOURCE_DATE_EPOCH})
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(contents ${package}.contents)
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${contents} COMMAND_ERROR_IS_FATAL ANY)

  # A trigger renews the linker's cache.
  file(REMOVE ${contents}/DEBIAN/postinst ${contents}/DEBIAN/postrm)

  # Libraries and what builds with them can be installed for several architectures side by side; the
  # tool of one architecture serves all. CPack knows this field from CMake 3.31 on.
  set(multiarch same)
  if(package MATCHES "/xmldom_[^/]*$")
    set(multiarch foreign)
  endif()
  file(READ ${contents}/DEBIAN/control control)
  file(WRITE ${contents}/DEBIAN/control "Multi-Arch: ${multiarch}\n${control}")

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
