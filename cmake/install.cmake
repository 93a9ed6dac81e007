# Installed: libraries, headers, the programs and their manuals, a CMake package and pkg-config files. The components are
# `runtime`, what programs run with; `development`, what they are built with; `tools`, the programs and their data.
include(CMakePackageConfigHelpers)

install(TARGETS ${TLVMSG_LIBRARIES}
        EXPORT tlvmsg
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
foreach(program tlv tlvc)
    if(TARGET ${program})
        install(TARGETS ${program} COMPONENT tools)
    endif()
endforeach()
if(TARGET tlv)
    install(FILES ${PROJECT_BINARY_DIR}/wireshark/tlvmsg.lua DESTINATION ${CMAKE_INSTALL_DATADIR}/tlvmsg COMPONENT tools)
endif()
if(TARGET tlvc)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/share/ DESTINATION ${CMAKE_INSTALL_DATADIR} COMPONENT tools
            REGEX /share/tlvmsg$ EXCLUDE) # a link to the sources
endif()
install(FILES ${PROJECT_SOURCE_DIR}/docs/man/tlv-schema.5 DESTINATION ${CMAKE_INSTALL_MANDIR}/man5 COMPONENT tools)

# Installed programs and libraries find the libraries wherever the prefix is, or where CMAKE_INSTALL_RPATH says.
if(NOT CMAKE_INSTALL_RPATH)
    set_target_properties(tlvmsg tlvmsg_inspect tlvmsg_forms tlvmsg_schema PROPERTIES INSTALL_RPATH $ORIGIN)
    if(TARGET tlv)
        file(RELATIVE_PATH to_libraries ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
        set_target_properties(tlv PROPERTIES INSTALL_RPATH $ORIGIN/${to_libraries})
    endif()
endif()
set(header_directory ${CMAKE_INSTALL_INCLUDEDIR}/tlvmsg)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/tlvmsg/ DESTINATION ${header_directory} COMPONENT development)
tlvmsg_generated(family_headers ${PROJECT_BINARY_DIR} "${TLVMSG_ALL_FAMILIES}" HEADER)
foreach(header IN LISTS family_headers)
    cmake_path(GET header PARENT_PATH directory)
    cmake_path(RELATIVE_PATH directory BASE_DIRECTORY ${TLVMSG_INCLUDE})
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${directory} COMPONENT development)
endforeach()

# What other families are built from: the schema that they import, and the rules that their codecs are made of.
install(DIRECTORY schema DESTINATION ${CMAKE_INSTALL_DATADIR}/tlvmsg COMPONENT tools FILES_MATCHING PATTERN *.tlv)
tlvmsg_generated(data ${PROJECT_BINARY_DIR} all DATA)
install(FILES ${data} docs/describe.schema.json DESTINATION ${CMAKE_INSTALL_DATADIR}/tlvmsg COMPONENT tools)
install(DIRECTORY rules runtime DESTINATION ${header_directory}/codec COMPONENT development FILES_MATCHING PATTERN *.h)
tlvmsg_generated(codec_headers ${PROJECT_BINARY_DIR} "${TLVMSG_FAMILIES}" CODEC_HEADER)
install(FILES ${codec_headers} DESTINATION ${header_directory}/codec COMPONENT development)

install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development
        PATTERN man EXCLUDE PATTERN describe.schema.json EXCLUDE)
install(DIRECTORY examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development PATTERN CMakeLists.txt EXCLUDE)
install(FILES examples/family/CMakeLists.txt DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples/family COMPONENT development)
install(DIRECTORY editors DESTINATION ${CMAKE_INSTALL_DATADIR}/tlvmsg COMPONENT tools)

# The programs are no part of the export: what is built with the libraries needs none of them to be installed.
set(package_directory ${CMAKE_INSTALL_LIBDIR}/cmake/tlvmsg)
install(EXPORT tlvmsg NAMESPACE tlvmsg:: DESTINATION ${package_directory} FILE tlvmsg-targets.cmake COMPONENT development)
configure_package_config_file(cmake/tlvmsg-config.cmake.in ${PROJECT_BINARY_DIR}/tlvmsg-config.cmake
                              INSTALL_DESTINATION ${package_directory} PATH_VARS CMAKE_INSTALL_BINDIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/tlvmsg-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/tlvmsg-config.cmake ${PROJECT_BINARY_DIR}/tlvmsg-config-version.cmake
              cmake/tlvmsg-family.cmake cmake/tlvmsg-generated.cmake
        DESTINATION ${package_directory} COMPONENT development)

set(platform_flags "-losal_pelix")
foreach(library IN LISTS TLVMSG_PLATFORM_LIBRARIES)
    string(APPEND platform_flags " -l${library}")
endforeach()
# Relative to the file itself, so that the prefix is that of the installation, wherever it goes. Directories that are
# given as absolute ones stay where they are.
cmake_path(SET package_config_directory ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${package_config_directory} OUTPUT_VARIABLE up_to_prefix)
foreach(name LIBDIR INCLUDEDIR DATADIR)
    set(directory ${CMAKE_INSTALL_${name}})
    if(NOT IS_ABSOLUTE ${directory})
        string(PREPEND directory "\${prefix}/")
    endif()
    set(PKG_CONFIG_${name} ${directory})
endforeach()

# `requires` is another library of the project that this one needs, `private_flags` what static linking adds, which
# `pkg-config --static` tells, and what is only there to be linked statically always.
function(install_pkg_config_file name description requires private_flags)
    set(public_flags "${platform_flags}")
    if(NOT TLVMSG_SHARED)
        string(APPEND public_flags " ${private_flags}")
    endif()
    configure_file(cmake/library.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
install_pkg_config_file(tlvmsg "${PROJECT_DESCRIPTION}" "" "")
install_pkg_config_file(tlvmsg_inspect "The same for input that cannot be trusted, and the schema as data" "" "")
install_pkg_config_file(tlvmsg_forms "Records as JSON, and back" tlvmsg_inspect "-lstdc++ -lm")
install_pkg_config_file(tlvmsg_schema "Schema files that a program loads while it runs" tlvmsg_forms "-lstdc++ -lm")
