# Finds GNU libidn (stringprep) and defines the target Libidn::Libidn.

find_path(Libidn_INCLUDE_DIR stringprep.h)
find_library(Libidn_LIBRARY idn)
mark_as_advanced(Libidn_INCLUDE_DIR Libidn_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Libidn REQUIRED_VARS Libidn_LIBRARY Libidn_INCLUDE_DIR)

if(Libidn_FOUND AND NOT TARGET Libidn::Libidn)
  add_library(Libidn::Libidn UNKNOWN IMPORTED)
  set_target_properties(Libidn::Libidn PROPERTIES
    IMPORTED_LOCATION ${Libidn_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${Libidn_INCLUDE_DIR})
endif()
