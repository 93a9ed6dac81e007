# tlvmsg_exports(TARGET SYMBOLS_FILE...) lets a shared library export these names alone, each in the node of the release
# that exported it first.
function(tlvmsg_exports target)
    set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    set(version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
    file(GLOB released CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/symbols/*/${target}.symbols)
    add_custom_command(OUTPUT ${script}
        COMMAND ${CMAKE_COMMAND} -DLIBRARY=${target} -DVERSION=${version} -DRELEASES=${PROJECT_SOURCE_DIR}/symbols
                "-DSYMBOLS=${ARGN}" -DOUT=${script} -P ${PROJECT_SOURCE_DIR}/cmake/version_script.cmake
        DEPENDS ${ARGN} ${released} ${PROJECT_SOURCE_DIR}/cmake/version_script.cmake
        VERBATIM)
    target_sources(${target} PRIVATE ${script})
    set_target_properties(${target} PROPERTIES LINK_DEPENDS ${script})
    target_link_options(${target} PRIVATE -Wl,--version-script=${script})
endfunction()
