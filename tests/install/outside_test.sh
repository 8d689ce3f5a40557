#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# Programs outside of this tree are built on what was installed, and only on that, and talk to the installed virtual
# switch. $CFLAGS and $CXXFLAGS say in which width.
#   outside_test.sh BUILD
. "$(dirname "$0")/installed.sh"

cmake --install "$1" --prefix "$work/installed" >/dev/null
prefix=$work/moved
mv "$work/installed" "$prefix"
cp -r "$prefix/share/doc/libport-mgr-common-dev/examples/outside" "$work/outside"
cd "$work/outside"
export PKG_CONFIG_LIBDIR="$prefix/$LIBDIR/pkgconfig"
c="${CC:-cc} ${CFLAGS:-} -std=c11 -Wall -Wextra -Wpedantic -Werror"
cxx="${CXX:-c++} ${CXXFLAGS:-} -std=c++20 -Wall -Wextra -Wpedantic -Werror"

# Each header of C is complete; those of C++ are what one of the programs is made of.
flags="$(pkg-config --cflags port_mgr_common) -fsyntax-only"
(cd "$prefix/include" && find . -name '*.h') | sed 's,^\./,,' | sort >"$work/headers"
while read -r header; do
    printf '#include <%s>\ntypedef int a_declaration;\n' "$header" >"$work/header.c"
    $c $flags "$work/header.c" || complain "as C: $header"
    $cxx $flags -x c++ "$work/header.c" || complain "as C++: $header"
done <"$work/headers"
echo '#include <port_mgr/port_mgr_common.h>' >"$work/header.cc"
clang++-16 -std=c++20 -Wall -Wextra -Wpedantic -Werror $flags "$work/header.cc" || complain "with clang"

cmake -S . -B build -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_LIBRARY_ARCHITECTURE="${LIBDIR#lib/}" >/dev/null
cmake --build build >/dev/null
libraries="$(pkg-config --cflags --libs port_mgr_common) -Wl,-rpath,$(pkg-config --variable=libdir port_mgr_common)"
$c port_states.c $libraries -o port_states
$cxx port_states_in_cpp.cc $libraries -o port_states_in_cpp
! grep --recursive --files-with-matches --fixed-strings "$source_folder" . || complain "that names this tree"

start_switch "$prefix/bin/pm-virtual-switch" "$prefix/share/port_mgr/chassis/fixed.toml"
"$prefix/bin/pmctl" show interface brief | awk 'NR > 1 { print $1, $4 }' >"$work/pmctl"
for line in 'fc1/1 up' 'fc1/16 down' 'port-channel2.7 up' 'mgmt0 up'; do
    grep --quiet --line-regexp "$line" "$work/pmctl" || complain "pmctl does not say '$line'"
done
for program in build/port_states build/port_states_in_cpp ./port_states ./port_states_in_cpp; do
    $program >"$work/states" || complain "$program: status $?"
    expect "$program" "$work/pmctl" "$work/states"
done
stop_switch

# The package fits programs of this version's kind, and of no other.
sed -i 's/port_mgr_common 0.1 /port_mgr_common 1.0 /' CMakeLists.txt
! cmake -S . -B build >"$work/cmake.log" 2>&1 || complain "version 0.1 was taken for 1.0"
grep --quiet 'compatible with requested' "$work/cmake.log" || complain "$(cat "$work/cmake.log")"
exit $failed
