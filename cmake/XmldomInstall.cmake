# Installs the libraries of this build, their headers, a CMake package and the pkg-config files.

include(CMakePackageConfigHelpers)

set(XMLDOM_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/xmldom)

install(TARGETS ${all_libraries} EXPORT xmldom-targets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)

if(NOT "xmldom-support" IN_LIST libraries)
  set(XMLDOM_SUPPORT_HEADERS "")
endif()
foreach(header IN LISTS XMLDOM_SUPPORT_HEADERS XMLDOM_HEADERS)
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${header}
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/xmldom/${folder}
    COMPONENT Development)
endforeach()

# ---- find_package(xmldom)

set(has_static_libraries OFF)
if(NOT BUILD_SHARED_LIBS OR XMLDOM_BUILD_STATIC)
  set(has_static_libraries ON)
endif()

set(package_build_dir ${CMAKE_CURRENT_BINARY_DIR}/package)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/xmldom-config.cmake.in ${package_build_dir}/xmldom-config.cmake
  INSTALL_DESTINATION ${XMLDOM_PACKAGE_DIR}
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${package_build_dir}/xmldom-config-version.cmake
  COMPATIBILITY SameMinorVersion)

set(package_files
  ${package_build_dir}/xmldom-config.cmake
  ${package_build_dir}/xmldom-config-version.cmake)
if(has_static_libraries)
  list(APPEND package_files ${PROJECT_SOURCE_DIR}/cmake/FindLibidn.cmake)
endif()

install(FILES ${package_files} DESTINATION ${XMLDOM_PACKAGE_DIR} COMPONENT Development)
install(EXPORT xmldom-targets
  NAMESPACE xmldom::
  DESTINATION ${XMLDOM_PACKAGE_DIR}
  COMPONENT Development)

# ---- pkg-config
#
# The files name the prefix, which `cmake --install --prefix` may still change; so they are
# written when installing.

# A folder as a .pc file names it: below the prefix, or absolute as it was given.
function(xmldom_pkgconfig_folder result folder)
  if(IS_ABSOLUTE "${folder}")
    set(${result} "${folder}" PARENT_SCOPE)
  else()
    set(${result} "\${prefix}/${folder}" PARENT_SCOPE)
  endif()
endfunction()

xmldom_pkgconfig_folder(pkgconfig_libdir "${CMAKE_INSTALL_LIBDIR}")
xmldom_pkgconfig_folder(pkgconfig_includedir "${CMAKE_INSTALL_INCLUDEDIR}")

set(support_requirement "xmldom-support = ${PROJECT_VERSION}")
if(XMLDOM_SUPPORT_PACKAGE)
  set(support_requirement "${XMLDOM_SUPPORT_PKGCONFIG}")
endif()

foreach(name IN LISTS libraries)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${package_build_dir}/${name}.pc.in @ONLY)
  install(CODE "
    set(folder \"${CMAKE_INSTALL_LIBDIR}/pkgconfig\")
    if(NOT IS_ABSOLUTE \"\${folder}\")
      set(folder \"\${CMAKE_INSTALL_PREFIX}/\${folder}\")
    endif()
    file(READ \"${package_build_dir}/${name}.pc.in\" text)
    file(WRITE \"${package_build_dir}/${name}.pc\" \"prefix=\${CMAKE_INSTALL_PREFIX}\\n\${text}\")
    file(INSTALL \"${package_build_dir}/${name}.pc\" DESTINATION \"\${folder}\")"
    COMPONENT Development)
endforeach()
