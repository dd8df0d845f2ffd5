# 64-bit Arm Linux, from Debian's g++-aarch64-linux-gnu; what is built runs under qemu-user.

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc) # GoogleTest asks for one
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64 -L /usr/aarch64-linux-gnu)

include("${CMAKE_CURRENT_LIST_DIR}/cross.cmake")
