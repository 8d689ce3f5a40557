#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The system service is what systemd takes for good and for safe, its command line starts the switch, and the switch
# calls nothing of the system that the service may not.
#   service_test.sh BUILD
. "$(dirname "$0")/installed.sh"
for tool in systemd-analyze strace; do
    command -v $tool >/dev/null || { echo "skipped: there is no $tool"; exit 77; }
done

prefix=$work/prefix
cmake --install "$1" --prefix "$prefix" >/dev/null
service=$prefix/lib/systemd/system/pm-virtual-switch.service
systemd-analyze verify --man=no "$service" >"$work/verdict" 2>&1 || complain "systemd does not take it"
! grep pm-virtual-switch "$work/verdict" || complain "that is what systemd says of it"
# Tenths of an exposure that goes from 0 to 10.
systemd-analyze security --offline=true --threshold=10 --no-pager "$service" >"$work/security" 2>&1 ||
    complain "$(tail -1 "$work/security")"

# expand_calls NAME...: the system calls of names that are calls, or groups of names.
expand_calls() {
    for name in "$@"; do
        case "$name" in
            @*)
                # shellcheck disable=SC2046
                expand_calls $(systemd-analyze syscall-filter "$name" | sed '1d; /#/d')
                ;;
            *) echo "$name" ;;
        esac
    done
}

# What the lines of the filter allow: each adds, or takes away.
: >"$work/allowed"
sed -n 's/^SystemCallFilter=//p' "$service" >"$work/filter"
while read -r line; do
    # shellcheck disable=SC2086
    expand_calls ${line#\~} | sort --unique >"$work/named"
    case "$line" in
        \~*) comm -23 "$work/allowed" "$work/named" >"$work/next" ;;
        *) sort --unique "$work/allowed" "$work/named" >"$work/next" ;;
    esac
    mv "$work/next" "$work/allowed"
done <"$work/filter"

# The command as the service manager runs it, with another group and another place for the administrator's chassis.
command=$(sed -n "s/^ExecStart=.*-c '\(.*\)'\$/\1/p" "$service" | sed 's/\$\$/$/g' |
    sed "s,/etc/port_mgr,$work/etc,; s,--config-group port-mgr,--config-group $(id -gn),")
export STATE_DIRECTORY="$work/state"
mkdir -m 0710 "$MTS_RUNTIME_DIR"
mkdir -m 0700 "$STATE_DIRECTORY" "$work/etc"

# run_service CHASSIS: until it was configured, reloaded and stopped.
run_service() {
    start_switch strace --follow-forks --quiet=all --output="$work/calls" sh -c "$command"
    grep --quiet ": ready: $1, .*, configured by group $(id -gn)\$" "$work/switch.log" || complain "$(cat "$work/switch.log")"
    "$prefix/bin/pmctl" config interface "$2" description "$1" || complain "it cannot be configured"
    "$prefix/bin/pmctl" show interface "$2" >/dev/null || complain "it cannot be asked"
    switch_itself=$(pgrep --parent "$switch")
    kill -HUP "$switch_itself"
    "$prefix/bin/pmctl" show interface "$2" >/dev/null || complain "it cannot be asked after a reload"
    kill "$switch_itself"
    wait "$switch" || complain "it ended with status $?"
    switch=
    sed -n 's/^[0-9]* *\([a-z_0-9]*\)(.*/\1/p' "$work/calls" | sort --unique >"$work/called"
    comm -23 "$work/called" "$work/allowed" >"$work/refused"
    [ ! -s "$work/refused" ] || complain "refused by the service's filter: $(tr '\n' ' ' <"$work/refused")"
    [ "$(wc -l <"$work/called")" -gt 20 ] || complain "not seen at work: $(cat "$work/called")"
}

run_service director fc1/1
grep --quiet 'description = "director"' "$STATE_DIRECTORY/state.toml" || complain "its state is not kept"
cp "$prefix/share/port_mgr/chassis/fixed.toml" "$work/etc/chassis.toml"
run_service fixed fc1/2
exit $failed
