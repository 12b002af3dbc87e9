#!/usr/bin/env bash
# The main job of the repository: install what is needed, build, run the tests, then run the
# example program that builds a tree and prints it.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install_deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=Release
cmake --build build -j2
ctest --test-dir build --output-on-failure
QT_QPA_PLATFORM=offscreen ./build/bin/PrintTree
