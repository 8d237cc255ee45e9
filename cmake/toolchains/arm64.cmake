# 64-bit ARM Linux, cross-built on Debian. Tests run under qemu-user, with this machine's arm64 libraries: the
# cross compiler's C library must not be mixed with them.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)

set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64)
