# 32-bit x86. A 64-bit x86 machine runs its programs itself, with the loader of the target.
set(debian_architecture i386)
set(compiler_triplet i686-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_CROSSCOMPILING_EMULATOR
  ${CMAKE_SYSROOT}/lib/ld-linux.so.2;--library-path;${CMAKE_SYSROOT}/usr/lib/i386-linux-gnu)
