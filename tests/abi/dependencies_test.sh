#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The library needs the C library, the dynamic loader and the platform's libraries, and nothing else.
#   dependencies_test.sh LIBRARY
set -eu
export LC_ALL=C

needed=$(readelf --dynamic --wide "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
if [ -z "$needed" ]; then
    echo "no needed libraries found in $1"
    exit 1
fi
failed=0
for name in $needed; do
    case "$name" in
        libmts.so | libutils.so | libpcm.so | libpfm_intf.so | libsdwrap.so | libbmp.so) ;;
        libc.so.6 | ld-linux.so.2 | ld-linux-x86-64.so.2) ;;
        *) echo "needs $name" && failed=1 ;;
    esac
done
exit $failed
