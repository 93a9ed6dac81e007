# The exact library (shared and static, from one set of objects), and the layout assertions.
list(TRANSFORM TLVMSG_FAMILIES REPLACE "(.+)" "${TLVMSG_GENERATED}/\\1_codecs.cpp" OUTPUT_VARIABLE codec_sources)
list(TRANSFORM TLVMSG_FAMILIES REPLACE "(.+)" "${TLVMSG_GENERATED}/\\1_layout.c" OUTPUT_VARIABLE layout_c_sources)
list(TRANSFORM TLVMSG_FAMILIES REPLACE "(.+)" "${TLVMSG_GENERATED}/\\1_layout.cpp" OUTPUT_VARIABLE layout_cpp_sources)

# The language without its run time: no exceptions, no RTTI, no guarded statics. Nothing is unwound through the
# library either, and its unwind tables would be a fifth of it, so only who asks gets them. Nor is code aligned:
# padding made it a tenth larger and nothing faster.
set(TLVMSG_COMPACT_CODE -falign-functions=1 -falign-loops=1 $<$<CXX_COMPILER_ID:GNU>:-falign-jumps=1>)
if(NOT TLVMSG_UNWIND_TABLES)
    list(APPEND TLVMSG_COMPACT_CODE -fno-asynchronous-unwind-tables -fno-unwind-tables)
endif()
function(add_exact_objects name)
    add_library(${name} OBJECT runtime/element.cpp runtime/memory.cpp runtime/scalars.cpp ${codec_sources})
    add_dependencies(${name} tlvmsg_schema)
    target_include_directories(${name} PUBLIC ${TLVMSG_INCLUDE} PRIVATE ${CMAKE_SOURCE_DIR} ${TLVMSG_GENERATED})
    target_compile_options(${name} PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -fvisibility=hidden
                                           -fvisibility-inlines-hidden ${TLVMSG_COMPACT_CODE} ${ARGN})
    target_link_libraries(${name} PRIVATE tlvmsg_warnings PUBLIC osal_pelix)
endfunction()

# CMake adds the C++ run time to whatever has C++ objects, the linker's language notwithstanding.
set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

# Linked by the C compiler driver with every symbol resolved: that nothing of the C++ run time is needed is thereby
# checked at every build.
function(add_exact_library name objects)
    add_library(${name} SHARED $<TARGET_OBJECTS:${objects}>)
    set_target_properties(${name} PROPERTIES OUTPUT_NAME tlvmsg VERSION ${PROJECT_VERSION}
                                             SOVERSION ${PROJECT_VERSION_MAJOR} LINKER_LANGUAGE C
                                             LINK_DEPENDS ${TLVMSG_GENERATED}/tlvmsg.map)
    target_link_options(${name} PRIVATE -Wl,--version-script=${TLVMSG_GENERATED}/tlvmsg.map
                                        -Wl,-Bsymbolic-functions -Wl,-z,defs)
    target_link_libraries(${name} PUBLIC osal_pelix ${TLVMSG_PLATFORM_LIBRARIES})
endfunction()

add_exact_objects(tlvmsg_objects)
add_exact_library(tlvmsg tlvmsg_objects)

# The same source for newer machines. Installed where the loader looks for it by itself; in the build tree it lies
# aside, so that what is tested does not depend on the machine.
if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64" AND NOT TLVMSG_SANITIZED AND NOT TLVMSG_FUZZ)
    add_exact_objects(tlvmsg_v3_objects -march=x86-64-v3)
    add_exact_library(tlvmsg_v3 tlvmsg_v3_objects)
    set_target_properties(tlvmsg_v3 PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib/x86-64-v3)
endif()

add_library(tlvmsg_static STATIC $<TARGET_OBJECTS:tlvmsg_objects>)
set_target_properties(tlvmsg_static PROPERTIES OUTPUT_NAME tlvmsg LINKER_LANGUAGE C)

foreach(library tlvmsg tlvmsg_static)
    add_dependencies(${library} tlvmsg_schema)
    target_include_directories(${library} INTERFACE $<BUILD_INTERFACE:${TLVMSG_INCLUDE}>
                                                    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endforeach()
target_link_libraries(tlvmsg_static PUBLIC osal_pelix ${TLVMSG_PLATFORM_LIBRARIES})

# Compiled for its assertions, to which sanitizers have nothing to add; never linked.
add_library(tlvmsg_layout OBJECT ${layout_c_sources} ${layout_cpp_sources})
set_target_properties(tlvmsg_layout PROPERTIES EXCLUDE_FROM_ALL ${TLVMSG_SANITIZED})
add_dependencies(tlvmsg_layout tlvmsg_schema)
target_include_directories(tlvmsg_layout PRIVATE ${TLVMSG_INCLUDE} ${CMAKE_SOURCE_DIR} ${TLVMSG_GENERATED})
target_link_libraries(tlvmsg_layout PRIVATE tlvmsg_warnings)
