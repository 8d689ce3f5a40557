#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The build of the reference fails on a function, a parameter, a result, a member or a macro that nobody described, and
# names each: in a copy of the headers that lacks one of each.
#   reference_gaps_test.sh BUILD DOXYFILE HEADERS
set -eu
build=$1
doxyfile=$2
headers=$3
work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
cp -r "$headers" "$work/headers"

# take HEADER SED_SCRIPT: takes a description from the copy
take() {
    sed "$2" "$headers/$1" >"$work/headers/$1"
    ! cmp -s "$headers/$1" "$work/headers/$1" || { echo "nothing was taken from $1 by: $2" && exit 1; }
}

take port_state_reason.h '/^PM_BEGIN_DECLS/,$s,^/\*\*$,/*,'
take net_dev_stats.h '/@param\[in\]  name/d'
take vsan_bitset.h '/@return/d'
take types.h 's,/\*\*< the first interface \*/,,'
take status.h '/A response without payload/d'
if "$build" "$doxyfile" "$work/output" "INPUT = $work/headers" >"$work/said" 2>&1; then
    echo "not refused"
    exit 1
fi

tr '\n' ' ' <"$work/said" | sed 's/error:/\n&/g' >"$work/complaints"
while read -r complaint; do
    grep --quiet "$complaint" "$work/complaints" || { echo "not named: $complaint" && cat "$work/said" && exit 1; }
done <<'END'
Member port_state_reason_string(.* is not documented
parameter of pm_get_proc_net_dev_stats(.* is not documented: *parameter 'name'
return type of member pm_create_vsan_bitset_from_pm_flexi_bitset is not documented
Member first (variable) of struct pm_if_index_range_t is not documented
Member PM_ERR_NO_PAYLOAD (macro definition) .* is not documented
END
echo "five gaps were named"
