#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Source files that the library names in its reports are paths from the root of the tree, whatever machine built it.
#   file_names_test.sh LIBRARY SOURCE_FOLDER
set -eu
export LC_ALL=C
library=$1
source_folder=$2
names=$(mktemp)
trap 'rm "$names"' EXIT

readelf --string-dump=.rodata "$library" | grep -o '[^ ]*\.cc$' | sort -u >"$names"
if [ ! -s "$names" ]; then
    echo "no names of source files found in $library"
    exit 1
fi
failed=0
while read -r name; do
    case "$name" in
        infra/port_manager/lib/pm_api_common/*.cc | infra/port_manager/lib/pm_cmi_common/*.cc) ;;
        *) echo "not a path from the root of the tree: $name" && failed=1 ;;
    esac
    if [ ! -f "$source_folder/$name" ]; then
        echo "no such file: $name"
        failed=1
    fi
done <"$names"
exit $failed
