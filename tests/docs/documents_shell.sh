# SPDX-License-Identifier: Apache-2.0
# The shell that a document's commands run in: reads names of scripts, sources each, and answers with its exit status.
# $1 is the file that their output goes to, $2 the one for the lines and the exit statuses of commands that fail.
documents_terminal=$1
documents_failures=$2
documents_background=

# A reader who starts a program in the background goes on when it has said something, or soon when it is silent.
documents_await_background() {
    [ "${!-}" != "$documents_background" ] || return 0
    documents_background=$!
    local size tenths=0
    size=$(stat --format %s "$documents_terminal")
    while [ "$(stat --format %s "$documents_terminal")" = "$size" ] && kill -0 "$documents_background" 2>/dev/null; do
        sleep 0.1
        tenths=$((tenths + 1))
        [ "$tenths" -lt 100 ] || break
        [ "$(readlink "/proc/$documents_background/fd/1")" = "$documents_terminal" ] || [ "$tenths" -lt 10 ] || break
    done
}

documents_note_failure() {
    [ "$3" != "$documents_script" ] || echo "$2 $1" >>"$documents_failures"
}

set -o functrace -o pipefail
while read -r documents_script; do
    trap 'documents_note_failure $? "$LINENO" "$BASH_SOURCE"' ERR
    trap documents_await_background DEBUG
    . "$documents_script" </dev/null >>"$documents_terminal" 2>&1
    documents_status=$?
    trap - ERR DEBUG
    documents_await_background
    echo "$documents_status"
done
kill $(jobs -p) 2>/dev/null
wait
