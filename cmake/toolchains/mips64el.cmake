# 64-bit little-endian MIPS; run by an emulator.
set(debian_architecture mips64el)
set(compiler_triplet mips64el-linux-gnuabi64)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR mips64)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-mips64el;-L;${CMAKE_SYSROOT})
