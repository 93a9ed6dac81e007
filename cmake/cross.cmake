# Toolchain file: Debian's cross compilers, and qemu to run what they build. -DTLVMSG_CROSS=TRIPLE: aarch64-linux-gnu;
# powerpc64-linux-gnu, whose byte order is the other one; arm-linux-gnueabihf and i686-linux-gnu, which have 32 bits.
string(REGEX REPLACE "-.*" "" CMAKE_SYSTEM_PROCESSOR ${TLVMSG_CROSS})
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_C_COMPILER ${TLVMSG_CROSS}-gcc)
set(CMAKE_CXX_COMPILER ${TLVMSG_CROSS}-g++)
string(REPLACE powerpc64 ppc64 qemu_name ${CMAKE_SYSTEM_PROCESSOR})
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${qemu_name} -L /usr/${TLVMSG_CROSS})
if(qemu_name STREQUAL i686) # runs on the host; in qemu-i386 7.2, what forks hangs
    set(CMAKE_CROSSCOMPILING_EMULATOR /usr/${TLVMSG_CROSS}/lib/ld-linux.so.2 --library-path /usr/${TLVMSG_CROSS}/lib)
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TLVMSG_CROSS)
