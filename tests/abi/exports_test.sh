#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The exports of the library are the functions that callers rely on, those that the public headers mark, and those that
# the version script names.
#   exports_test.sh LIBRARY PROMISED_EXPORTS VERSION_SCRIPT HEADER...
set -eu
export LC_ALL=C
library=$1
promised=$2
script=$3
shift 3
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

readelf --dyn-syms --wide "$library" |
    awk '($5 == "GLOBAL" || $5 == "WEAK") && $7 != "UND" && $4 != "FILE" { sub(/@.*/, "", $8); print $8 }' |
    sort >"$work/library"

# Comments and preprocessor lines go first; a declaration may span lines, and its name stands before the first parenthesis.
sed 's,/\*.*\*/,,;  /\/\*/,/\*\//d; /^#/d' "$@" | tr '\n' ' ' | tr ';' '\n' |
    sed -n 's/.*PM_API \([^(]*\).*/\1/p' | sed 's/\[.*//; s/ *$//; s/.*[ *]//' | sort >"$work/headers"

sed 's,/\*.*\*/,,' "$script" | tr -d ' \t' | sed -n '/^global:/,/^local:/p' | grep ';$' | tr -d ';' |
    sort >"$work/script"

sort "$promised" >"$work/promise"

if [ ! -s "$work/library" ]; then
    echo "no exports found in $library"
    exit 1
fi
failed=0
for source in promise headers script; do
    if ! diff "$work/$source" "$work/library" >"$work/difference"; then
        echo "exports (>) and $source (<) differ:"
        cat "$work/difference"
        failed=1
    fi
done

# Callers read this array by its size.
if ! readelf --dyn-syms --wide "$library" | awk '$3 == 200 && $4 == "OBJECT" { sub(/@.*/, "", $8); print $8 }' |
    grep --quiet --line-regexp local_temp_string_buffer; then
    echo "local_temp_string_buffer is not an object of 200 bytes"
    failed=1
fi
[ $failed -eq 0 ] && echo "$(wc -l <"$work/library") exports, all that were promised"
exit $failed
