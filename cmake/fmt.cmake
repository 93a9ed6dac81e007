# tlvmsg_fmt: fmt as a part of what uses it, compiled once, from its headers, which serve every machine. Nothing depends
# on its library then, or exports it, and its names are our own, so that static libraries of ours stand beside any fmt
# of a program's. What links it has the headers; its objects belong into each program and each library of ours.
find_package(fmt QUIET)
if(TARGET fmt::fmt-header-only)
    set(fmt_include_directory $<TARGET_PROPERTY:fmt::fmt-header-only,INTERFACE_INCLUDE_DIRECTORIES>)
else() # CMake refuses its package, which is for this machine, where pointers have another size
    find_path(FMT_INCLUDE_DIRECTORY fmt/format-inl.h REQUIRED)
    set(fmt_include_directory ${FMT_INCLUDE_DIRECTORY})
endif()
add_library(tlvmsg_fmt OBJECT base/fmt.cpp)
target_include_directories(tlvmsg_fmt SYSTEM PUBLIC ${fmt_include_directory})
target_compile_definitions(tlvmsg_fmt PUBLIC "FMT_BEGIN_NAMESPACE=namespace fmt { inline namespace tlvmsg_fmt {"
                                             "FMT_END_NAMESPACE=}}")
target_compile_options(tlvmsg_fmt PRIVATE -fvisibility=hidden -fvisibility-inlines-hidden -ffunction-sections -fdata-sections)
