# The sources of each folder of a target are compiled as one: templates of the formatting and JSON libraries take most of
# the time, and are made once a folder instead of once a file. Names without linkage differ within a folder, therefore.
# -DTLVMSG_UNITY=OFF compiles file by file, for whoever works on one for long, and for tools that look at files.
option(TLVMSG_UNITY "Compile the sources of a folder of the programs as one" ON)
# The files of folders named behind the target stay for themselves, as they are alike by design.
function(tlvmsg_compile_by_folder target)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources EXCLUDE REGEX "^\\$<")
    foreach(source IN LISTS sources)
        get_filename_component(folder ${source} DIRECTORY)
        if(folder IN_LIST ARGN)
            set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
        endif()
        string(REPLACE "${PROJECT_SOURCE_DIR}/" "" folder "${folder}") # the group names an object in archives
        string(MAKE_C_IDENTIFIER "${target}_${folder}" group)
        set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${group})
    endforeach()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TLVMSG_UNITY} UNITY_BUILD_MODE GROUP)
endfunction()

# Those of a test program lie in one folder, and are compiled a few as one.
function(tlvmsg_compile_in_batches target)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ${TLVMSG_UNITY} UNITY_BUILD_BATCH_SIZE 5)
endfunction()
