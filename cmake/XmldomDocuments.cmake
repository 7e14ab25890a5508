# Installs the pages and the examples as they stand beside each other in the project, so that the
# links between them lead somewhere. XMLDOM_DOCUMENTS_FOLDER is where.

set(XMLDOM_DOCUMENTS_FOLDER ${CMAKE_INSTALL_DOCDIR})
if(XMLDOM_DEBIAN_PACKAGES)
  set(XMLDOM_DOCUMENTS_FOLDER ${CMAKE_INSTALL_DATADIR}/doc/libxmldom-doc)
endif()

set(pages README.md SECURITY.md CHANGELOG.md CONTRIBUTING.md)
if(NOT XMLDOM_DEBIAN_PACKAGES)  # these have the license in a file of Debian's name
  list(APPEND pages LICENSE)
endif()
install(FILES ${pages}
  DESTINATION ${XMLDOM_DOCUMENTS_FOLDER} COMPONENT Documentation)
install(DIRECTORY docs
  DESTINATION ${XMLDOM_DOCUMENTS_FOLDER} COMPONENT Documentation
  PATTERN reference EXCLUDE)
install(DIRECTORY examples
  DESTINATION ${XMLDOM_DOCUMENTS_FOLDER} COMPONENT Documentation
  PATTERN CMakeLists.txt EXCLUDE)
