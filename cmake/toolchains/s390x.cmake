# 64-bit IBM Z, the one big-endian machine here; run by an emulator.
set(debian_architecture s390x)
set(compiler_triplet s390x-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-s390x;-L;${CMAKE_SYSROOT})
