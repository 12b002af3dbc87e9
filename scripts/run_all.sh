#!/usr/bin/env bash
# The first command of the README: install what is needed (Debian), build, and run the demo on the
# shipped sample installation in screenshot mode. It prints its summary and writes
# wgttree-demo.png in the current folder (or the file given as first argument).
set -euo pipefail
cd "$(dirname "$0")/.."
out="${1:-wgttree-demo.png}"
bash scripts/install_deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release
cmake --build build -j2
QT_QPA_PLATFORM=offscreen ./build/demo-root/bin/wgttree-demo --screenshot "$out"
test -s "$out"
