#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The pictures of the documents are what their sources draw.
#   pictures_test.sh IMAGES
set -eu
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

drawn=0
for source in "$1"/*.py; do
    picture=${source%.py}.svg
    /usr/bin/python3 -B "$source" >"$work/picture"
    cmp "$work/picture" "$picture" || { echo "draw it anew: $source >$picture" && exit 1; }
    drawn=$((drawn + 1))
done
echo "$drawn pictures, as their sources draw them"
[ $drawn -gt 0 ]
