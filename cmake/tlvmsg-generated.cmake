# tlvmsg_generated(VARIABLE DIRECTORY FAMILIES [USE...])
#
# The files that `tlvc generate --out DIRECTORY` writes for these families, of all uses or of some. The one list of them,
# for this build and for those of users: an output of an emitter is a row, which a test compares with what is written. The
# family `all` is the library's own, which has what is of all families together.
function(tlvmsg_generated variable directory families)
    set(of_family HEADER:include/tlvmsg/FAMILY.h # for programs
                  HEADER:include/tlvmsg/bounded/FAMILY.h
                  HEADER:include/tlvmsg/FAMILY.hpp
                  CODEC_HEADER:src/FAMILY_codecs.h # for the codecs of other families
                  CODEC:src/FAMILY_codecs.cpp # part of the exact library
                  BOUNDED:src/FAMILY_bounded.cpp # part of the bounded library
                  TYPE:src/FAMILY_types.cpp
                  LAYOUT:src/FAMILY_layout.c # compiled for its assertions
                  LAYOUT:src/FAMILY_layout.cpp)
    set(of_all HEADER:include/tlvmsg/FAMILY.h
               HEADER:include/tlvmsg/bounded/FAMILY.h
               HEADER:include/tlvmsg/FAMILY.hpp
               BOUNDED:src/FAMILY_bounded.cpp
               TYPE:src/FAMILY_types.cpp
               TYPE:src/FAMILY_index.cpp # every type by name and by tag
               SYMBOLS:src/tlvmsg.symbols # what libraries export
               SYMBOLS:src/types.symbols
               DATA:share/tlvmsg/schema.json) # for programs in any language
    list(JOIN ARGN "|" uses)
    if(NOT uses)
        set(uses "[A-Z_]+")
    endif()
    set(files "")
    foreach(family IN LISTS families)
        set(outputs ${of_family})
        if(family STREQUAL "all")
            set(outputs ${of_all})
        endif()
        list(FILTER outputs INCLUDE REGEX "^(${uses}):")
        list(TRANSFORM outputs REPLACE "^[A-Z_]+:" "")
        list(TRANSFORM outputs REPLACE "FAMILY" "${family}")
        list(TRANSFORM outputs PREPEND "${directory}/")
        list(APPEND files ${outputs})
    endforeach()
    set(${variable} ${files} PARENT_SCOPE)
endfunction()
