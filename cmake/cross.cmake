# Toolchain file: Debian's cross compilers, and qemu to run what they build. -DTLVMSG_CROSS=aarch64, or powerpc64,
# whose byte order is the other one.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${TLVMSG_CROSS})
set(CMAKE_C_COMPILER ${TLVMSG_CROSS}-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER ${TLVMSG_CROSS}-linux-gnu-g++)
string(REPLACE powerpc64 ppc64 qemu_name ${TLVMSG_CROSS})
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${qemu_name} -L /usr/${TLVMSG_CROSS}-linux-gnu)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TLVMSG_CROSS)
