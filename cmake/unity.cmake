# The sources of each folder of a target are compiled as one: templates of the formatting and JSON libraries take most of
# the time, and are made once a folder instead of once a file. Names without linkage differ within a folder, therefore.
# -DTLVMSG_UNITY=OFF compiles file by file, for whoever works on one for long, and for tools that look at files.
option(TLVMSG_UNITY "Compile the sources of a folder of the programs as one" ON)
function(tlvmsg_compile_by_folder target)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources EXCLUDE REGEX "^\\$<")
    foreach(source IN LISTS sources)
        get_filename_component(folder ${source} DIRECTORY)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP "${target}${folder}")
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TLVMSG_UNITY} UNITY_BUILD_MODE GROUP)
endfunction()
