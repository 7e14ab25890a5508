# The target "reference": HTML pages in <build folder>/reference, from the comments in the installed
# headers (XMLDOM_SUPPORT_HEADERS, XMLDOM_HEADERS). It needs Doxygen and awk when it is built.

set(XMLDOM_REFERENCE_FOLDER ${PROJECT_BINARY_DIR}/reference)
set(XMLDOM_REFERENCE_SOURCES ${PROJECT_SOURCE_DIR}/docs/reference)

set(input ${XMLDOM_SUPPORT_HEADERS} ${XMLDOM_HEADERS})
list(TRANSFORM input PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
list(APPEND input ${XMLDOM_REFERENCE_SOURCES}/front-page.md)
list(JOIN input "\" \"" XMLDOM_REFERENCE_INPUT)
configure_file(${XMLDOM_REFERENCE_SOURCES}/Doxyfile.in ${PROJECT_BINARY_DIR}/Doxyfile @ONLY)

# Old pages would stay beside new ones.
add_custom_target(reference
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${XMLDOM_REFERENCE_FOLDER}
  COMMAND doxygen ${PROJECT_BINARY_DIR}/Doxyfile
  COMMENT "Writing the reference to ${XMLDOM_REFERENCE_FOLDER}/index.html"
  VERBATIM)
