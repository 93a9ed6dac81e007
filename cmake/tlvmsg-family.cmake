include(${CMAKE_CURRENT_LIST_DIR}/tlvmsg-generated.cmake)

# tlvmsg_add_family(TARGET SCHEMA FILE... [IMPORT DIRECTORY...] [LIBRARY NAME])
#
# Compiles families of records into a library of yours: the exact functions, the bounded operations by name, and the
# descriptors. TARGET is a library that there is already, or becomes one as add_library does. Who links it finds
# <tlvmsg/FAMILY.h>, <tlvmsg/bounded/FAMILY.h> and <tlvmsg/FAMILY.hpp>, and is linked with LIBRARY: tlvmsg_inspect unless
# said otherwise, or tlvmsg_inspect_static. FILEs are all schema files of the families; a family is named after the
# directory of its files. What they import is looked for beside the file, below each DIRECTORY, and in the library's
# own schema.
#
# Headers are generated into TARGET_family/include of the binary directory; to install the library for others, install
# that directory's content, to CMAKE_INSTALL_INCLUDEDIR or include, and TARGET as usual.
#
# Generated code is C++20 that needs no C++ run time: a project whose own code is C enables CXX for it. A cross build
# takes a tlvc that runs on the host: -DTLVC_EXECUTABLE=/usr/bin/tlvc.
function(tlvmsg_add_family target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LIBRARY" "SCHEMA;IMPORT")
    if(NOT arg_SCHEMA OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "tlvmsg_add_family(TARGET SCHEMA FILE... [IMPORT DIRECTORY...] [LIBRARY NAME]) wants schema "
                            "files and takes no '${arg_UNPARSED_ARGUMENTS}'; which kind of library it is "
                            "add_library(${target} SHARED) says before it, or BUILD_SHARED_LIBS")
    endif()
    if(CMAKE_VERSION VERSION_LESS 3.20)
        message(FATAL_ERROR "tlvmsg_add_family needs CMake 3.20; this is ${CMAKE_VERSION}")
    endif()
    if(NOT CMAKE_CXX_COMPILER_LOADED)
        message(FATAL_ERROR "tlvmsg_add_family: generated code is C++; add it: project(... LANGUAGES C CXX)")
    endif()
    if(NOT arg_LIBRARY)
        set(arg_LIBRARY tlvmsg_inspect)
    endif()
    if(TLVC_EXECUTABLE)
        set(tlvc ${TLVC_EXECUTABLE})
    elseif(TARGET tlvmsg::tlvc)
        set(tlvc $<TARGET_FILE:tlvmsg::tlvc>)
    else()
        message(FATAL_ERROR "tlvmsg_add_family: there is no tlvc beside the libraries or in PATH; install it (Debian: "
                            "tlvmsg-tools), or name one that runs here with -DTLVC_EXECUTABLE")
    endif()

    set(out ${CMAKE_CURRENT_BINARY_DIR}/${target}_family)
    set(stamp ${out}/generated)
    set(options "")
    foreach(directory IN LISTS arg_IMPORT)
        cmake_path(ABSOLUTE_PATH directory BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
        list(APPEND options -I ${directory})
    endforeach()
    set(families "")
    set(files "")
    foreach(file IN LISTS arg_SCHEMA)
        cmake_path(ABSOLUTE_PATH file BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} NORMALIZE)
        if(NOT EXISTS ${file})
            message(FATAL_ERROR "tlvmsg_add_family: there is no '${file}'")
        endif()
        if(IS_DIRECTORY ${file})
            message(FATAL_ERROR "tlvmsg_add_family: '${file}' is a directory: name its schema files")
        endif()
        list(APPEND files ${file})
        cmake_path(GET file PARENT_PATH directory)
        cmake_path(GET directory FILENAME family)
        list(APPEND families ${family})
    endforeach()
    list(REMOVE_DUPLICATES families)
    tlvmsg_generated(generated ${out} "${families}")
    set(sources ${generated}) # a project may have no C
    list(FILTER sources INCLUDE REGEX "\\.cpp$")

    # Generated files that would not change keep their times, so the stamp has the time of generation.
    add_custom_command(
        OUTPUT ${stamp}
        BYPRODUCTS ${generated}
        COMMAND ${tlvc} generate --out ${out} --stamp ${stamp} ${options} ${files}
        DEPENDS ${files} ${tlvc}
        DEPFILE ${stamp}.d
        COMMENT "tlvc: ${families}"
        VERBATIM)
    add_custom_target(${target}_generated DEPENDS ${stamp})

    add_library(${target}_codecs OBJECT ${sources})
    add_dependencies(${target}_codecs ${target}_generated)
    set_target_properties(${target}_codecs PROPERTIES POSITION_INDEPENDENT_CODE ON CXX_STANDARD 20
                          CXX_STANDARD_REQUIRED ON CXX_EXTENSIONS OFF)
    target_include_directories(${target}_codecs PRIVATE ${out}/include ${out}/src)
    target_compile_options(${target}_codecs PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics
                                                    -fvisibility=hidden -fvisibility-inlines-hidden
                                                    -ffunction-sections -fdata-sections)
    # The library may be linked with another family, whose types this one names.
    target_link_libraries(${target}_codecs PRIVATE tlvmsg::tlvmsg_rules $<TARGET_PROPERTY:${target},LINK_LIBRARIES>)

    set(installed_headers include)
    if(CMAKE_INSTALL_INCLUDEDIR)
        set(installed_headers ${CMAKE_INSTALL_INCLUDEDIR})
    endif()
    if(NOT TARGET ${target})
        add_library(${target})
    endif()
    add_dependencies(${target} ${target}_generated)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:${target}_codecs>)
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${out}/include> $<BUILD_INTERFACE:${out}/src>
                               $<INSTALL_INTERFACE:${installed_headers}>)
    target_link_libraries(${target} PUBLIC tlvmsg::${arg_LIBRARY})
endfunction()
