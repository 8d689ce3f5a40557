#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The reference is built without a warning, everything of the C interface has an entry in it, and its manual pages are
# well formed.
#   reference_test.sh BUILD DOXYFILE PROMISED_EXPORTS
set -eu
build=$1
doxyfile=$2
promised=$3
here=$(dirname "$0")
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

"$build" "$doxyfile" "$work"
/usr/bin/python3 -B "$here/check_entries.py" "$work/xml" "$promised"

cd "$work/man/man3"
while read -r name; do
    [ -e "$name.3" ] || { echo "no manual page: $name" && exit 1; }
done <"$promised"
pages=$(find . -name '*.3' -type f)
broken=$(find . -xtype l)
[ -z "$broken" ] || { echo "links to no page: $broken" && exit 1; }
for page in $pages; do groff -man -ww -b -z -Tutf8 "$page"; done >"$work/warnings" 2>&1
# shellcheck disable=SC2086
mandoc -T lint $pages >>"$work/warnings" || true
cat "$work/warnings"
[ ! -s "$work/warnings" ]
echo "$(echo "$pages" | wc -l) manual pages without a warning"
