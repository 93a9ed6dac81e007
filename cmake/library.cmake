# tlvmsg_add_library(NAME LANGUAGE C|CXX EXPORTS FILE... OBJECTS OBJECT... [OPTIONS OPTION...] [NEEDS LIBRARY...]
#                    [STATIC_NEEDS LIBRARY...])
#
# NAME of these objects: shared, or static with BUILD_SHARED_LIBS=OFF. With TLVMSG_BOTH_KINDS there is a static NAME_static
# beside the shared one. OPTIONS are for linking the shared one, LANGUAGE says by which compiler's driver: C proves at
# every build that nothing of the C++ run time is needed. STATIC_NEEDS is what programs then have to be told.
function(tlvmsg_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LANGUAGE" "EXPORTS;OBJECTS;OPTIONS;NEEDS;STATIC_NEEDS")
    set(libraries ${name})
    set(static ${name})
    if(TLVMSG_SHARED)
        add_library(${name} SHARED ${arg_OBJECTS})
        set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
                                                 LINKER_LANGUAGE ${arg_LANGUAGE})
        tlvmsg_exports(${name} ${arg_EXPORTS})
        target_link_options(${name} PRIVATE -Wl,--gc-sections ${arg_OPTIONS})
        if(NOT TLVMSG_SANITIZED) # clang's run time of sanitizers is in programs alone
            target_link_options(${name} PRIVATE -Wl,-z,defs)
        endif()
        target_link_libraries(${name} PUBLIC ${arg_NEEDS})
        set(static ${name}_static)
    endif()
    if(NOT TLVMSG_SHARED OR TLVMSG_BOTH_KINDS)
        add_library(${static} STATIC ${arg_OBJECTS})
        set_target_properties(${static} PROPERTIES OUTPUT_NAME ${name} LINKER_LANGUAGE C) # C programs link it, too
        foreach(need IN LISTS arg_NEEDS)
            if(TLVMSG_SHARED AND TARGET ${need}_static)
                set(need ${need}_static)
            endif()
            target_link_libraries(${static} PUBLIC ${need})
        endforeach()
        target_link_libraries(${static} INTERFACE ${arg_STATIC_NEEDS})
        list(APPEND libraries ${static})
        list(REMOVE_DUPLICATES libraries)
    endif()
    foreach(library IN LISTS libraries)
        add_dependencies(${library} tlvmsg_generate)
        target_include_directories(${library} INTERFACE $<BUILD_INTERFACE:${TLVMSG_INCLUDE}>
                                                        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
    endforeach()
    set_property(GLOBAL APPEND PROPERTY TLVMSG_LIBRARIES ${libraries})
endfunction()
