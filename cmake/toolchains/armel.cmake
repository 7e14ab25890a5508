# 32-bit ARM without hardware floating point; run by an emulator.
set(debian_architecture armel)
set(compiler_triplet arm-linux-gnueabi)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR armv5tel)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm;-L;${CMAKE_SYSROOT})
