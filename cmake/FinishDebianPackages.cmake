# Does to the packages what CPack has no setting for. CPack runs this behind packing.
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

  execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${contents} ${package}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(REMOVE_RECURSE ${contents})
endforeach()
