#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Programs that were built with the library as it was work with the library as it is: nothing that its baseline describes
# has gone or changed. New functions are welcome; the test of the exports asks for them in its list.
#   baseline_test.sh LIBRARY BASELINE
set -eu

if abidiff --no-added-syms --harmless "$2" "$1"; then
    echo "the interface is that of $2"
else
    echo "the interface differs from $2."
    echo "If callers can live with the change, accept it with scripts/abi --accept and commit the new baseline."
    exit 1
fi
