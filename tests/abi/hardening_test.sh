#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# What makes a program or shared object hard to misuse is in the built file.
#   hardening_test.sh FILE [buffers]    buffers: its functions have some, which are guarded
set -eu
export LC_ALL=C
file=$1
failed=0

complain() {
    echo "$file: $1"
    failed=1
}

segments=$(readelf --program-headers --wide "$file")
dynamic=$(readelf --dynamic --wide "$file")
imports=$(readelf --dyn-syms --wide "$file" | awk '$7 == "UND" { sub(/@.*/, "", $8); print $8 }')

has() { printf '%s\n' "$1" | grep --quiet --extended-regexp "$2"; }

has "$segments" '^ +GNU_RELRO ' || complain "no read-only relocations"
has "$dynamic" '\((BIND_NOW|FLAGS)\).*BIND_NOW|\(FLAGS_1\).* NOW' || complain "binds lazily, so its table of functions stays writable"
has "$segments" '^ +GNU_STACK .* RW +0x' || complain "the stack is executable"
! has "$segments" '^ +LOAD .* RWE ' || complain "a segment is writable and executable"
! has "$dynamic" '\(TEXTREL\)' || complain "its code is written to when it is loaded"
if has "$segments" '^ +INTERP '; then
    has "$dynamic" '\(FLAGS_1\).* PIE' || complain "a program at a fixed address"
fi
if [ "${2:-}" = buffers ]; then
    has "$imports" '^__stack_chk_fail' || complain "no stack protector"
    has "$imports" '^__[a-z]+_chk$' || complain "no checked functions of the C library (_FORTIFY_SOURCE)"
fi
exit $failed
