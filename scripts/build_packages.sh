#!/usr/bin/env bash
# Builds the Debian packages of one Qt major into <build folder>/packages:
#
#   bash scripts/build_packages.sh 5|6 [<build folder>]     (default: build-packages-qt<major>)
#
# A build of its own, configured for /usr (Debian's multiarch library folder, the Designer plugin
# in Qt's folder), without tests or benchmarks; the compiler cache makes it mostly links after a
# build of the same sources.
set -euo pipefail
major="${1:?Qt major: 5 or 6}"
dir="${2:-build-packages-qt$major}"
cd "$(dirname "$0")/.."
cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=Release -DWGT_QT_MAJOR="$major" -DCMAKE_INSTALL_PREFIX=/usr \
    -DWGT_PRIVATE_DEMO_ROOT=ON \
    -DBUILD_TESTING=OFF -DWGT_BUILD_BENCH=OFF
cmake --build "$dir" -j2
rm -rf "$dir/packages"
(cd "$dir" && cpack -G DEB)
ls "$dir"/packages/*.deb
