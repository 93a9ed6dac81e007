# One random schema from its text to running codecs. Wants
#     SEED, DIRECTORY          which schema, and where all of it goes (emptied first)
#     MAKER, TLVC              make_random_schema and the schema compiler
#     CC, CXX                  compiler and flags, as lists
#     LIBRARIES                what the program is linked from besides the generated code, as a list
function(run)
    execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${DIRECTORY} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${DIRECTORY})
file(MAKE_DIRECTORY ${DIRECTORY})
run(${MAKER} ${SEED} schema)
file(GLOB schema RELATIVE ${DIRECTORY} ${DIRECTORY}/schema/*/*.tlv)
run(${TLVC} generate --library --out generated ${schema})

# Formatting changes the text, not what it says: the same products byte for byte.
run(${TLVC} format ${schema})
run(${TLVC} format --check ${schema})
run(${TLVC} generate --library --out generated_again ${schema})
run(diff -r generated generated_again)

file(GLOB layout ${DIRECTORY}/generated/src/*_layout.c)
run(${CC} -Igenerated/include -fsyntax-only ${layout})
run(${CC} -Igenerated/include -fsyntax-only -x c generated/include/tlvmsg/bounded/all.h)
run(${CXX} -Igenerated/include -fsyntax-only -x c++ generated/include/tlvmsg/all.hpp)
set(tests ${CMAKE_CURRENT_LIST_DIR}/..)
file(GLOB bounded ${DIRECTORY}/generated/include/tlvmsg/bounded/*.h)
run(sed -n -E -f ${tests}/typed/choices.sed ${bounded} OUTPUT_FILE ${DIRECTORY}/typed_choices.inc)
file(GLOB sources ${DIRECTORY}/generated/src/*.cpp ${tests}/typed/choose_test.cpp)
run(${CXX} -Igenerated/include -Igenerated/src -I. -I${tests} ${sources} ${LIBRARIES} -o checks)
run(./checks --gtest_brief=1)
