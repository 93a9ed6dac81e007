# What tlvmsg_generated lists is what TLVC writes, for a family of a user and for the library. DIRECTORY is emptied first.
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/tlvmsg-generated.cmake)

function(expect_listed families) # OPTION...
    file(REMOVE_RECURSE ${DIRECTORY})
    file(WRITE ${DIRECTORY}/schema/led/led.tlv "enum led_state = 40000\n")
    execute_process(COMMAND ${TLVC} generate ${ARGN} --out ${DIRECTORY}/out ${DIRECTORY}/schema/led/led.tlv
                    COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB_RECURSE written ${DIRECTORY}/out/*)
    tlvmsg_generated(listed ${DIRECTORY}/out "${families}")
    set(unlisted ${written})
    list(REMOVE_ITEM unlisted ${listed})
    list(REMOVE_ITEM listed ${written})
    if(unlisted OR listed)
        message(SEND_ERROR "cmake/tlvmsg-generated.cmake lacks '${unlisted}', and lists '${listed}', which is not written")
    endif()
endfunction()

expect_listed(led)
expect_listed("all;led" --library)
