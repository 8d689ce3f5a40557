# SPDX-License-Identifier: Apache-2.0
# installed.sh: what the tests of this folder share; sourced by them. $LIBDIR is where libraries are, in a prefix.
set -eu
export LC_ALL=C
here=$(dirname "$(readlink -f "$0")")
source_folder=$(dirname "$(dirname "$here")")
work=$(mktemp -d /tmp/port_mgr-install-XXXXXX)
export MTS_RUNTIME_DIR="$work/run"
failed=0
switch=

finish() {
    stop_switch
    rm -rf "$work"
}
trap finish EXIT
trap "exit 1" HUP INT TERM PIPE

complain() {
    echo "$1"
    failed=1
}

# expect WHAT FILE FILE: the first one holds what is expected.
expect() {
    if ! diff "$2" "$3" >"$work/difference"; then
        complain "$1: expected (<) and found (>):"
        cat "$work/difference"
    fi
}

# Starts a virtual switch by its command line, and waits until it is ready.
start_switch() {
    : >"$work/switch.log"  # of what the one before said; the new one may come to its own late
    "$@" >"$work/switch.log" 2>&1 &
    switch=$!
    for _ in $(seq 200); do
        ! grep --quiet ': ready: ' "$work/switch.log" || return 0
        kill -0 "$switch" 2>/dev/null || break
        sleep 0.05
    done
    cat "$work/switch.log"
    exit 1
}

stop_switch() {
    [ -n "$switch" ] || return 0
    kill "$switch" 2>/dev/null || true
    wait "$switch" || complain "the virtual switch ended with status $?"
    switch=
}

# expected_files [PACKAGE]: the files of a package, or of all, in the prefix.
expected_files() {
    sed -n "s,@libdir@,$LIBDIR,; s/^${1:-[^ #]*} \+//p" "$here/files.txt" | sort
}

# check_files WHAT PREFIX [PACKAGE]: exactly those that files.txt names are there; manual pages may be compressed.
check_files() {
    expected_files "${3:-}" | sed -n 's,/\*$,/,p' >"$work/folders"
    expected_files "${3:-}" | grep --invert-match '/\*$' >"$work/expected"
    (cd "$2" && find . -type f -o -type l) | sed 's,^\./,,; s,^\(share/man/.*\)\.gz$,\1,' | sort |
        awk '!inside { folder[$0]; next } { for (f in folder) if (index($0, f) == 1) next; print }' \
            "$work/folders" inside=1 - >"$work/found"
    expect "$1" "$work/expected" "$work/found"
}

elf_files_in() {
    find "$1" -type f \( -path '*/bin/*' -o -name '*.so' \)
}
