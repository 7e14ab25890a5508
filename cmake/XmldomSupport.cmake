# Which support layer the DOM library is built on: this project's, or the one that
# XMLDOM_SUPPORT_LIBRARY names (docs/support-layer.md).
#
# Sets XMLDOM_SUPPORT_TARGET to what the DOM library links, and XMLDOM_SUPPORT_PACKAGE to the CMake
# package in which an application finds that again; empty for this project's own.

set(XMLDOM_SUPPORT_TARGET xmldom-support)
set(XMLDOM_SUPPORT_PACKAGE "")
if(NOT XMLDOM_SUPPORT_LIBRARY)
  return()
endif()

string(REGEX REPLACE "::.*" "" XMLDOM_SUPPORT_PACKAGE "${XMLDOM_SUPPORT_LIBRARY}")
if(NOT TARGET ${XMLDOM_SUPPORT_LIBRARY})
  find_package(${XMLDOM_SUPPORT_PACKAGE} REQUIRED)
endif()

if(TARGET ${XMLDOM_SUPPORT_LIBRARY})
  set(XMLDOM_SUPPORT_TARGET ${XMLDOM_SUPPORT_LIBRARY})
elseif(TARGET ${XMLDOM_SUPPORT_PACKAGE}::${XMLDOM_SUPPORT_PACKAGE})
  set(XMLDOM_SUPPORT_TARGET ${XMLDOM_SUPPORT_PACKAGE}::${XMLDOM_SUPPORT_PACKAGE})
else()
  message(FATAL_ERROR "The package ${XMLDOM_SUPPORT_PACKAGE} has no target "
    "${XMLDOM_SUPPORT_LIBRARY}; name the one to link in XMLDOM_SUPPORT_LIBRARY, as PACKAGE::TARGET")
endif()

set(XMLDOM_SUPPORT_PKGCONFIG "${XMLDOM_SUPPORT_PACKAGE}" CACHE STRING
  "pkg-config module of the library that XMLDOM_SUPPORT_LIBRARY names")
