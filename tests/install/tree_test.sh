#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# An install puts the files of files.txt into the prefix, and no others; they know no path of the build.
#   tree_test.sh BUILD
. "$(dirname "$0")/installed.sh"

DESTDIR=$work/root cmake --install "$1" --prefix /usr >/dev/null
check_files "installed into an empty root" "$work/root/usr"
[ "$(ls "$work/root")" = usr ] || complain "installed beside the prefix: $(ls "$work/root")"

prefix=$work/prefix
(cd "$work" && cmake --install "$1" --prefix prefix >/dev/null)
check_files "installed into a prefix" "$prefix"

for tree in "$work/root" "$prefix"; do
    for path in "$source_folder" "$(readlink -f "$1")"; do
        ! grep --recursive --files-with-matches --fixed-strings "$path" "$tree" || complain "that is where it was built: $path"
    done
done

# Only the service names files of the prefix.
! grep --recursive --files-with-matches --fixed-strings "$prefix" "$prefix" | grep --invert-match '\.service$' ||
    complain "that cannot be moved"
for path in bin/pm-virtual-switch share/port_mgr/chassis/director.toml; do
    service=lib/systemd/system/pm-virtual-switch.service
    grep --quiet --fixed-strings "$prefix/$path" "$prefix/$service" || complain "the service does not name $prefix/$path"
    grep --quiet --fixed-strings "/usr/$path" "$work/root/usr/$service" || complain "the service does not name /usr/$path"
done

# An empty entry would be the working directory of whoever runs the program.
elf_files_in "$prefix" | while read -r file; do
    path=$(readelf --dynamic --wide "$file" | sed -n 's/.*runpath: \[\(.*\)\]/\1/p')
    case "$file" in
        */bin/*) expected="\$ORIGIN/../$LIBDIR" ;;
        *) expected="\$ORIGIN" ;;
    esac
    [ "$path" = "$expected" ] || echo "$file: its run path is '$path', not '$expected'"
done >"$work/run_paths"
[ ! -s "$work/run_paths" ] || complain "$(cat "$work/run_paths")"
exit $failed
