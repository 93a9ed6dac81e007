# Runs tlvc over schema/: one directory a family; or takes what a source archive brings of it. Sets TLVMSG_FAMILIES, TLVMSG_ALL_FAMILIES, which also has what is of
# them all together, and the target tlvmsg_generate. Lays the hand-written public headers beside the generated ones, so that
# the build tree has the include/ of an installed one.
file(GLOB_RECURSE schema_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/schema/*.tlv)
set(TLVMSG_GENERATED ${PROJECT_BINARY_DIR}/src)
set(TLVMSG_INCLUDE ${PROJECT_BINARY_DIR}/include)

set(TLVMSG_FAMILIES "")
foreach(file IN LISTS schema_files)
    cmake_path(GET file PARENT_PATH directory)
    cmake_path(GET directory FILENAME family)
    list(APPEND TLVMSG_FAMILIES ${family})
endforeach()
list(REMOVE_DUPLICATES TLVMSG_FAMILIES)
set(TLVMSG_ALL_FAMILIES all ${TLVMSG_FAMILIES})

tlvmsg_generated(generated ${PROJECT_BINARY_DIR} "${TLVMSG_ALL_FAMILIES}")
if(TLVMSG_GENERATED_FILES)
    tlvmsg_generated(shipped ${TLVMSG_GENERATED_FILES} "${TLVMSG_ALL_FAMILIES}")
    add_custom_command(
        OUTPUT ${generated}
        COMMAND ${CMAKE_COMMAND} -E copy_directory ${TLVMSG_GENERATED_FILES} ${PROJECT_BINARY_DIR}
        DEPENDS ${shipped}
        COMMENT "C and C++ from ${TLVMSG_GENERATED_FILES}"
        VERBATIM)
else()
    add_custom_command(
        OUTPUT ${generated}
        COMMAND ${TLVC_EXECUTABLE} generate --library --out ${PROJECT_BINARY_DIR} ${schema_files}
        DEPENDS ${schema_files} ${TLVC_EXECUTABLE}
        COMMENT "tlvc: schema to C and C++"
        VERBATIM)
endif()

file(GLOB_RECURSE public_headers RELATIVE ${PROJECT_SOURCE_DIR}/include
     CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/*)
foreach(header IN LISTS public_headers)
    configure_file(${PROJECT_SOURCE_DIR}/include/${header} ${TLVMSG_INCLUDE}/${header} COPYONLY)
endforeach()

# Where programs in bin/ look for it.
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/share/tlvmsg)
file(CREATE_LINK ${PROJECT_SOURCE_DIR}/schema ${PROJECT_BINARY_DIR}/share/tlvmsg/schema SYMBOLIC)
configure_file(${PROJECT_SOURCE_DIR}/docs/describe.schema.json ${PROJECT_BINARY_DIR}/share/tlvmsg/describe.schema.json COPYONLY)

add_custom_target(tlvmsg_generate DEPENDS ${generated})
