#!/bin/sh
# musl.sh INCLUDE LIBRARIES CONSUMER_DIRECTORY
# Programs of another C library link with the static libraries as they are: these want a few functions of any.
. "$(dirname "$0")/lib.sh"
for library in tlvmsg tlvmsg_inspect; do
    quietly musl-gcc -Wall -Wextra -Werror -static "-I$1" "$3/$library.c" "-L$2" "-l$library" -losal_pelix -o "$work/program"
    quietly "$work/program"
done
