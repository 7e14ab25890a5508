# Debian packages by CPack: libxmldom1 (both libraries), libxmldom-dev (what builds an application),
# libxmldom-doc (pages, examples and reference) and xmldom (the tool), with debugging information for
# the libraries and the tool. Included where
# XMLDOM_DEBIAN_PACKAGES is on; scripts/packages builds them.

set(packaging_dir ${PROJECT_SOURCE_DIR}/packaging/debian)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME xmldom)
set(CPACK_PACKAGE_VENDOR "xmldom developers")
set(CPACK_PACKAGE_CONTACT "xmldom developers <developers@xmldom.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
# Debugging information goes into packages of its own, with the ending -dbgsym.
set(CPACK_DEBIAN_RUNTIME_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_TOOL_DEBUGINFO_PACKAGE ON)
set(CPACK_SET_DESTDIR ON)  # so that the .pc files name the prefix, and not where it is staged
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PrepareDebianPackages.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/FinishDebianPackages.cmake)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development Documentation Tool)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# The changelog of the packages says which revision of this version they are.
file(STRINGS ${packaging_dir}/changelog changelog_head LIMIT_COUNT 1)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${packaging_dir}/changelog)
if(NOT changelog_head MATCHES "^xmldom \\((.*)-([0-9]+)\\) ")
  message(FATAL_ERROR "${packaging_dir}/changelog does not begin with a version: ${changelog_head}")
endif()
if(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR
    "${packaging_dir}/changelog is of version ${CMAKE_MATCH_1}, not ${PROJECT_VERSION}")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})
set(package_version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})

# Files in the packages are as old as the changelog says, so that the same sources give the same
# packages.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  set(CPACK_XMLDOM_SOURCE_DATE_EPOCH $ENV{SOURCE_DATE_EPOCH})
else()
  execute_process(
    COMMAND dpkg-parsechangelog --file ${packaging_dir}/changelog --show-field Timestamp
    OUTPUT_VARIABLE CPACK_XMLDOM_SOURCE_DATE_EPOCH
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()

# What each package depends on comes from its binaries, as far as other projects are concerned.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/xmldom)

# What packages that link the libraries will depend on, for each symbol and as a whole, and that the
# linker's cache is to be renewed.
set(library_package libxmldom${XMLDOM_SOVERSION})
set(control_dir ${PROJECT_BINARY_DIR}/debian)
file(WRITE ${control_dir}/triggers "activate-noawait ldconfig\n")
file(WRITE ${control_dir}/shlibs "\
libxmldom ${XMLDOM_SOVERSION} ${library_package} (>= ${PROJECT_VERSION})
libxmldom-support ${XMLDOM_SOVERSION} ${library_package} (>= ${PROJECT_VERSION})
")
set(CPACK_XMLDOM_SYMBOLS ${packaging_dir}/${library_package}.symbols)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${control_dir}/triggers ${control_dir}/shlibs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library_package} (= ${package_version}), libexpat1-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS libxmldom-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${library_package} (>= ${PROJECT_VERSION})")

# Describes the package of a component: name, section, and what it says of itself (the first line is
# the synopsis).
function(xmldom_debian_package component name section description)
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_COMPONENT_${key}_DESCRIPTION "${description}" PARENT_SCOPE)

  set(documents ${CMAKE_INSTALL_DATADIR}/doc/${name})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION ${documents} RENAME copyright COMPONENT ${component})
  install(FILES ${packaging_dir}/changelog
    DESTINATION ${documents} RENAME changelog.Debian COMPONENT ${component})
  install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    DESTINATION ${documents} RENAME changelog COMPONENT ${component})
  install(FILES ${packaging_dir}/${name}.lintian-overrides
    DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${name} COMPONENT ${component})
endfunction()

xmldom_debian_package(Runtime ${library_package} libs
"XML document object model for small devices - libraries
A C++ library that gives an application an XML document as a tree in memory,
with classes in the shape of the COM-style XML DOM: documents, nodes, lists,
reference counts. It builds trees by name and value, selects by path, edits
with XML fragments, writes indented, masked or in pages, and compares trees.

This package has the shared libraries.")

xmldom_debian_package(Development libxmldom-dev libdevel
"XML document object model for small devices - development files
A C++ library that gives an application an XML document as a tree in memory,
with classes in the shape of the COM-style XML DOM.

This package has the headers, the CMake package and the pkg-config files that
build an application.")

xmldom_debian_package(Documentation libxmldom-doc doc
"XML document object model for small devices - documentation
A C++ library that gives an application an XML document as a tree in memory,
with classes in the shape of the COM-style XML DOM.

This package has a guide and pages on ownership, paths, results and limits,
examples, and a reference of all classes and functions as HTML pages.")

xmldom_debian_package(Tool xmldom text
"XML documents from the command line: check, search, edit, compare
Tells whether XML documents are well-formed and where they are not, writes
what a path selects, shows the shape of a document, edits in place so that a
file is replaced whole or not at all, and compares two documents.")

# The reference is made with the rest of this build.
find_program(DOXYGEN_PROGRAM doxygen)
if(NOT DOXYGEN_PROGRAM)
  message(FATAL_ERROR "The package libxmldom-doc needs Doxygen (Debian package doxygen)")
endif()
set_target_properties(reference PROPERTIES EXCLUDE_FROM_ALL OFF)
install(DIRECTORY ${PROJECT_BINARY_DIR}/reference/
  DESTINATION ${XMLDOM_DOCUMENTS_FOLDER}/html COMPONENT Documentation)
install(FILES ${packaging_dir}/libxmldom-doc.doc-base
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc-base RENAME libxmldom-doc.xmldom
  COMPONENT Documentation)

include(CPack)
