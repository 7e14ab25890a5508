# 64-bit little-endian PowerPC; run by an emulator.
set(debian_architecture ppc64el)
set(compiler_triplet powerpc64le-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR ppc64le)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-ppc64le;-L;${CMAKE_SYSROOT})
