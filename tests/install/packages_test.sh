#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# The Debian packages hold the files of files.txt and say of themselves what packages.txt says. dpkg installs them into
# an empty root, where the programs run.
#   packages_test.sh BUILD                they come out the same a second time
#   packages_test.sh BUILD OTHER_BUILD    the libraries of OTHER_BUILD, where it was built, go beside those of BUILD
. "$(dirname "$0")/installed.sh"
command -v dpkg >/dev/null || { echo "skipped: there is no dpkg"; exit 77; }
PATH=$PATH:/usr/sbin:/sbin  # dpkg asks for programs there
export SOURCE_DATE_EPOCH=1700000000

# make_packages BUILD FOLDER
make_packages() {
    cpack --config "$1/CPackConfig.cmake" -B "$2" >/dev/null
    rm -r "$2/_CPack_Packages"
}

# needed_of_system FILE...: what they need of the system's packages, as a package says it.
needed_of_system() {
    glibc=$(readelf --version-info --wide "$@" | grep -o 'Name: GLIBC_[0-9.]*' | sed 's/.*_//' | sort --version-sort | tail -1)
    needed="libc6 (>= $glibc)"
    libraries=$(readelf --dynamic --wide "$@" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
    case "$libraries" in *libstdc++*) needed="$needed, libstdc++6 (>= $("${CXX:-c++}" -dumpfullversion))" ;; esac
    case "$libraries" in *libgcc_s*) needed="$needed, libgcc-s1 (>= 3.0)" ;; esac
    echo "$needed"
}

# describe PACKAGE EXTRACTED: what packages.txt says of it, with what its files need.
describe() {
    files=$(elf_files_in "$2")
    # shellcheck disable=SC2086
    system=$([ -z "$files" ] || needed_of_system $files)
    sed -n "/^Package: $1\$/,/^\$/p" "$here/packages.txt" | sed '/^$/d' |
        sed "s/@architecture@/$architecture/; s/@version@/$version/g; s/@system@/$system/"
}

# check_package DEB PACKAGE
check_package() {
    dpkg-deb --raw-extract "$1" "$work/$2"
    describe "$2" "$work/$2" | sort >"$work/expected"
    dpkg-deb --field "$1" Package Architecture Multi-Arch Section Maintainer Depends Recommends | sort >"$work/found"
    expect "$1" "$work/expected" "$work/found"
    dpkg-deb --field "$1" Description | sed -n 2p | grep --quiet '^ [^ ]' || complain "$1 is not described"
    check_files "$1" "$work/$2/usr" "$2"
    [ -z "$(find "$work/$2/usr/share/man" ! -type d ! -name '*.gz' 2>/dev/null)" ] || complain "$1: pages are not compressed"
    (cd "$work/$2" && find usr -type f -exec md5sum {} + | sort) >"$work/expected"
    sort "$work/$2/DEBIAN/md5sums" >"$work/found"
    expect "$1: sums" "$work/expected" "$work/found"
    case "$2" in
        libport-mgr-common | libport-mgr-platform)
            grep --quiet ' ldconfig$' "$work/$2/DEBIAN/triggers" || complain "$1 does not run ldconfig" ;;
    esac
}

# An empty root for dpkg, of both architectures, that has what our packages need of the system.
make_root() {
    mkdir -p "$root/var/lib/dpkg/info" "$root/var/lib/dpkg/updates" "$root/etc"
    printf 'amd64\ni386\n' >"$root/var/lib/dpkg/arch"
    for of in amd64 i386; do
        for package in libc6:2.36-9 libstdc++6:12.2.0-14 libgcc-s1:12.2.0-14; do
            printf '%s\n' "Package: ${package%:*}" "Status: install ok installed" "Maintainer: none" \
                "Architecture: $of" "Multi-Arch: same" "Version: ${package#*:}" "Description: of the system" ""
            touch "$root/var/lib/dpkg/info/${package%:*}:$of.list"
        done
    done >"$root/var/lib/dpkg/status"
}

# The scripts of the packages find the root in $DPKG_ROOT.
install_in_root() {
    dpkg --root="$root" --log="$work/dpkg.log" --force-script-chrootless --force-unsafe-io --install "$@" \
        >"$work/dpkg.out" 2>&1 || complain "$(cat "$work/dpkg.out")"
}

make_packages "$1" "$work/packages"
architecture=$(dpkg-deb --field "$work"/packages/pmctl_*.deb Architecture)
version=$(dpkg-deb --field "$work"/packages/pmctl_*.deb Version)
sed -n "s/^Package: \(.*\)/\1_${version}_$architecture.deb/p" "$here/packages.txt" | sort >"$work/expected"
(cd "$work/packages" && ls) | sort >"$work/found"
expect packages "$work/expected" "$work/found"
for deb in $(cat "$work/found"); do check_package "$work/packages/$deb" "${deb%%_*}"; done

# Those of the library's functions come from the reference, which scripts/check builds.
reference=$source_folder/build/docs/man/man3
pages=$work/libport-mgr-common-dev/usr/share/man/man3
if [ -d "$reference" ]; then
    (cd "$reference" && ls) | sed 's/$/.gz/' >"$work/expected"
    (cd "$pages" && ls) >"$work/found"
    expect "manual pages of section 3" "$work/expected" "$work/found"
    gzip --decompress --stdout "$pages/pm_get_port_info.3.gz" | grep --quiet '^\.TH ' || complain "pm_get_port_info(3) is no page"
else
    echo "the reference was not built: there are no manual pages of section 3"
fi

if [ -z "${2:-}" ]; then
    make_packages "$1" "$work/again"
    diff --recursive "$work/packages" "$work/again" || complain "other packages of the same files"
fi

root=$work/root
mkdir "$root"
if [ "$(id -u)" -eq 0 ]; then
    make_root
    install_in_root "$work"/packages/*.deb
    grep --quiet '^port-mgr:' "$root/etc/passwd" || complain "there is no user for the service"
    [ ! -e "$root/etc/systemd" ] || complain "the service was enabled: $(find "$root/etc/systemd")"
else
    echo "not root: the packages are extracted, not installed"
    for deb in "$work"/packages/*.deb; do dpkg-deb --extract "$deb" "$root"; done
fi
start_switch "$root/usr/bin/pm-virtual-switch" "$root/usr/share/port_mgr/chassis/fixed.toml"
"$root/usr/bin/pmctl" show interface fc1/1 | grep --quiet '^fc1/1' || complain "pmctl does not show fc1/1"
stop_switch

if [ "$(id -u)" -eq 0 ] && [ -n "${2:-}" ]; then
    if [ -x "$2/bin/pmctl" ]; then
        make_packages "$2" "$work/other"
        install_in_root "$work"/other/lib*.deb
        ls "$root"/usr/lib/*/libport_mgr_common.so | wc -l | grep --quiet --line-regexp 2 ||
            complain "the libraries of both widths are not beside each other"
    else
        echo "$2 was not built: its packages are not installed beside these"
    fi
fi
if [ "$(id -u)" -eq 0 ]; then
    dpkg --root="$root" --verify >"$work/changed" 2>&1 || true
    [ ! -s "$work/changed" ] || complain "installed, but not as packaged: $(cat "$work/changed")"
    # As after the service was enabled and ran; a chassis is the administrator's.
    mkdir -p "$root/etc/port_mgr" "$root/etc/systemd/system/multi-user.target.wants" "$root/var/lib/port_mgr"
    touch "$root/etc/port_mgr/chassis.toml" "$root/var/lib/port_mgr/state.toml"
    ln -s /lib/systemd/system/pm-virtual-switch.service "$root/etc/systemd/system/multi-user.target.wants"
    # shellcheck disable=SC2046
    dpkg --root="$root" --log="$work/dpkg.log" --force-script-chrootless --purge \
        $(dpkg-query --admindir="$root/var/lib/dpkg" --show --showformat='${binary:Package}\n' '*port-mgr*' pmctl) \
        >"$work/dpkg.out" 2>&1 ||
        complain "$(cat "$work/dpkg.out")"
    left=$(cd "$root" && find . \( -name '*port*mgr*' -o -name 'pm*' \))
    [ "$left" = ./etc/port_mgr ] || complain "left after a purge: $left"
fi
exit $failed
