# The exact library, and the layout assertions.
tlvmsg_generated(codec_sources ${PROJECT_BINARY_DIR} "${TLVMSG_FAMILIES}" CODEC)
tlvmsg_generated(layout_sources ${PROJECT_BINARY_DIR} "${TLVMSG_FAMILIES}" LAYOUT)

# The language without its run time: no exceptions, no RTTI, no guarded statics. Nothing is unwound through the
# library either, and its unwind tables would be a fifth of it, so only who asks gets them. Nor is code aligned:
# padding made it a tenth larger and nothing faster.
set(TLVMSG_COMPACT_CODE -falign-functions=1 -falign-loops=1 $<$<CXX_COMPILER_ID:GNU>:-falign-jumps=1>)
if(NOT TLVMSG_UNWIND_TABLES)
    list(APPEND TLVMSG_COMPACT_CODE -fno-asynchronous-unwind-tables -fno-unwind-tables)
endif()
if(TLVMSG_SANITIZED) # which takes longer to optimize than the tests save by it
    list(APPEND TLVMSG_COMPACT_CODE -O0)
endif()
# Statically linked programs leave out with --gc-sections what they do not call.
set(TLVMSG_SECTIONS -ffunction-sections -fdata-sections)
add_library(tlvmsg_objects OBJECT runtime/element.cpp runtime/memory.cpp runtime/scalars.cpp ${codec_sources})
add_dependencies(tlvmsg_objects tlvmsg_generate)
target_include_directories(tlvmsg_objects PUBLIC ${TLVMSG_INCLUDE} PRIVATE ${PROJECT_SOURCE_DIR} ${TLVMSG_GENERATED})
target_compile_options(tlvmsg_objects PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -fvisibility=hidden
                                              -fvisibility-inlines-hidden ${TLVMSG_SECTIONS} ${TLVMSG_COMPACT_CODE})
target_link_libraries(tlvmsg_objects PRIVATE tlvmsg_warnings PUBLIC osal_pelix)

# CMake adds the C++ run time to whatever has C++ objects, the linker's language notwithstanding.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

tlvmsg_add_library(tlvmsg LANGUAGE C EXPORTS ${TLVMSG_GENERATED}/tlvmsg.symbols OBJECTS $<TARGET_OBJECTS:tlvmsg_objects>
                   OPTIONS -Wl,-Bsymbolic-functions NEEDS osal_pelix ${TLVMSG_PLATFORM_LIBRARIES})

# What the codecs of other families are made of.
add_library(tlvmsg_rules INTERFACE)
add_dependencies(tlvmsg_rules tlvmsg_generate)
target_include_directories(tlvmsg_rules INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                                                  $<BUILD_INTERFACE:${TLVMSG_GENERATED}>
                                                  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/tlvmsg/codec>)

# Compiled for its assertions, to which sanitizers have nothing to add; never linked.
if(PROJECT_IS_TOP_LEVEL)
    add_library(tlvmsg_layout OBJECT ${layout_sources})
    set_target_properties(tlvmsg_layout PROPERTIES EXCLUDE_FROM_ALL ${TLVMSG_SANITIZED})
    add_dependencies(tlvmsg_layout tlvmsg_generate)
    target_include_directories(tlvmsg_layout PRIVATE ${TLVMSG_INCLUDE} ${PROJECT_SOURCE_DIR} ${TLVMSG_GENERATED})
    target_link_libraries(tlvmsg_layout PRIVATE tlvmsg_warnings)
endif()
