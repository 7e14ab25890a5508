# What the toolchains of this folder share: Debian's cross compiler for `compiler_triplet`, and a
# folder of Debian packages for the target, made by scripts/cross-sysroot.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_CXX_COMPILER ${compiler_triplet}-g++)

# Where scripts/cross-test has them, unless said otherwise.
if(NOT XMLDOM_SYSROOT)
  get_filename_component(XMLDOM_SYSROOT
    ${CMAKE_CURRENT_LIST_DIR}/../../build/sysroot/${debian_architecture} ABSOLUTE)
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES XMLDOM_SYSROOT)

set(CMAKE_SYSROOT ${XMLDOM_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
