# Takes the headers of fmt alone, which serve every machine. CMake refuses its package, which is for this machine, where
# pointers have another size.
find_package(fmt QUIET)
if(NOT TARGET fmt::fmt-header-only)
    find_path(FMT_INCLUDE_DIRECTORY fmt/format.h REQUIRED)
    add_library(fmt::fmt-header-only INTERFACE IMPORTED)
    target_include_directories(fmt::fmt-header-only INTERFACE ${FMT_INCLUDE_DIRECTORY})
    target_compile_definitions(fmt::fmt-header-only INTERFACE FMT_HEADER_ONLY=1)
endif()

# Libraries that are shipped have fmt inside. Those that are only tested use the shared one, which halves the time that
# compiling them with sanitizers takes.
set(TLVMSG_FMT fmt::fmt-header-only)
set(TLVMSG_FMT_LIBRARY "")
if(TLVMSG_SANITIZED AND TARGET fmt::fmt)
    set(TLVMSG_FMT fmt::fmt)
    set(TLVMSG_FMT_LIBRARY fmt)
endif()
