#!/usr/bin/env bash
# The Debian packages of both Qt majors: built by cpack (scripts/build_packages.sh), named the
# Debian way, all six unpacked into one scratch root without a file shared between two of them,
# the library with its SONAME, and the outside project of tests/install built and run against each
# -dev package twice: with CMake (find_package) and with pkg-config.
#
#   bash tests/packages/run_package_test.sh [<work folder>]     (default: build-packages-test)
set -euo pipefail
cd "$(dirname "$0")/../.."
src="$PWD"
work="${1:-build-packages-test}"
rm -rf "$work"
mkdir -p "$work"
work="$(cd "$work" && pwd)"
root="$work/root"
version=1.0.0
arch="$(dpkg --print-architecture)"
multiarch="$(dpkg-architecture -qDEB_HOST_MULTIARCH 2>/dev/null || gcc -print-multiarch)"
fail() { echo "package test: $*" >&2; exit 1; }

debs=()
for major in 5 6; do
    bash scripts/build_packages.sh "$major" "build-packages-qt$major"
    if [ "$major" = 5 ]; then names=(libwgttreewidget1 libwgttreewidget-dev wgttree-demo)
    else names=(libwgttreewidget-qt6-1 libwgttreewidget-qt6-dev wgttree-demo-qt6); fi
    for name in "${names[@]}"; do
        deb="build-packages-qt$major/packages/${name}_${version}_${arch}.deb"
        [ -f "$deb" ] || fail "missing $deb (have: $(ls build-packages-qt$major/packages))"
        [ "$(dpkg-deb -f "$deb" Package)" = "$name" ] || fail "$deb does not name itself $name"
        debs+=("$deb")
    done
done
[ "${#debs[@]}" -eq 6 ] || fail "expected six packages, have ${#debs[@]}"

# No file (or link) in two packages: all six install on one machine.
for deb in "${debs[@]}"; do
    dpkg-deb -c "$deb" | awk '$1 !~ /^d/ {print $6}' | sed 's#^\./#/#'
done | sort | uniq -d > "$work/shared-files.txt"
[ ! -s "$work/shared-files.txt" ] || fail "files in more than one package: $(cat "$work/shared-files.txt")"
for deb in "${debs[@]}"; do
    dpkg-deb -x "$deb" "$root"
done

libdir="$root/usr/lib/$multiarch"
for pkg in WgtTreeWidget WgtTreeWidgetQt6; do
    soname="$(readelf -d "$libdir/lib$pkg.so.$version" | sed -n 's/.*Library soname: \[\(.*\)\]/\1/p')"
    [ "$soname" = "lib$pkg.so.1" ] || fail "lib$pkg.so.$version has SONAME '$soname'"
    [ -L "$libdir/lib$pkg.so" ] || fail "lib$pkg.so (development link) missing"
    [ -f "$libdir/pkgconfig/$pkg.pc" ] || fail "$pkg.pc missing"
done
[ -f "$libdir/qt5/plugins/designer/libWgtTreeWidgetDesigner.so" ] || fail "Qt 5 Designer plugin missing"
[ -f "$libdir/qt6/plugins/designer/libWgtTreeWidgetQt6Designer.so" ] || fail "Qt 6 Designer plugin missing"

export QT_QPA_PLATFORM=offscreen
export LD_LIBRARY_PATH="$libdir"
export PKG_CONFIG_PATH="$libdir/pkgconfig"
for pkg in WgtTreeWidget WgtTreeWidgetQt6; do
    if [ "$pkg" = WgtTreeWidget ]; then major=5; uic=/usr/lib/qt5/bin/uic; else major=6; uic=/usr/lib/qt6/libexec/uic; fi
    # CMake: the package's config found under the scratch root.
    cmake -S "$src/tests/install/consumer" -B "$work/cmake-$pkg" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_PREFIX_PATH="$root/usr" -DWGT_PACKAGE="$pkg" > "$work/cmake-$pkg.log"
    cmake --build "$work/cmake-$pkg" >> "$work/cmake-$pkg.log"
    out="$("$work/cmake-$pkg/WgtConsumer")"
    echo "$out" | grep -q "on Qt $major\." || fail "CMake consumer of $pkg: $out"
    echo "$out" | grep -q "form from uic holds a CLS_WgtDeviceTree" || fail "CMake consumer of $pkg: $out"

    # pkg-config: the flags alone, with the form compiled by the major's uic.
    flags="$(pkg-config --cflags --libs "$pkg")" || fail "pkg-config knows no $pkg"
    echo "$flags" | grep -q -- "-l$pkg" || fail "pkg-config $pkg gives no -l$pkg: $flags"
    mkdir -p "$work/pc-$pkg"
    "$uic" "$src/tests/install/consumer/TwoTrees.ui" -o "$work/pc-$pkg/ui_TwoTrees.h"
    # shellcheck disable=SC2086
    g++ -std=c++17 -fPIC -I"$work/pc-$pkg" "$src/tests/install/consumer/main.cpp" -o "$work/pc-$pkg/consumer" $flags
    out="$("$work/pc-$pkg/consumer")"
    echo "$out" | grep -q "on Qt $major\." || fail "pkg-config consumer of $pkg: $out"
    echo "$out" | grep -q "form from uic holds a CLS_WgtDeviceTree" || fail "pkg-config consumer of $pkg: $out"
    echo "package test: $pkg ok (CMake and pkg-config)"
done
echo "package test: six packages, no shared file, both majors ok"
