# 32-bit little-endian MIPS; run by an emulator.
set(debian_architecture mipsel)
set(compiler_triplet mipsel-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR mips)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-mipsel;-L;${CMAKE_SYSROOT})
