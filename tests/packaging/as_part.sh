#!/bin/sh
# as_part.sh SOURCE_DIRECTORY TLVC
# Another project can have the sources as a part of itself, on its own platform library or on the one here, and its
# program with a family of its own runs. Building all of its programs is for the night.
. "$(dirname "$0")/lib.sh"
for platform in OFF ON; do
    quietly cmake -S "$1/tests/packaging/consumer" -B "$work/$platform" -DTLVMSG_SOURCE="$1" -DTLVC_EXECUTABLE="$2" \
        -DTLVMSG_EXTERNAL_OSAL_PELIX=$platform
done
quietly cmake --build "$work/ON" --target fans -j2
"$work/ON/programs/fans"
