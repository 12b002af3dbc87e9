#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need. Runs as root (CI) or through sudo.
set -euo pipefail
# Linguist's tools (lrelease) compile the translations; clang and its runtime libraries build the
# fuzz targets (libFuzzer); ccache keeps compiled objects for every later build on the machine.
# Both Qt majors: the library builds against Qt 5.15 and Qt 6 (Debian's Qt 6 wants the OpenGL
# headers for QtGui; its tools packages carry the Linguist tools). The Designer plugin and its
# tests want Qt's designer interface and QUiLoader: qttools5-dev for Qt 5; for Qt 6 qt6-tools-dev,
# whose QUiLoader needs the OpenGL widgets module (libqt6opengl6-dev). The API reference wants
# doxygen and qhelpgenerator; the package test dpkg-deb and dpkg-architecture (dpkg-dev). The walk
# through the accessibility bus wants a virtual display, a session bus, the accessibility bus and
# registry, and Python's pyatspi (the system python3).
packages=(build-essential cmake qtbase5-dev qtbase5-dev-tools qttools5-dev-tools qttools5-dev
          qt6-base-dev qt6-base-dev-tools libgl-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
          libqt6opengl6-dev doxygen qhelpgenerator-qt5 dpkg-dev
          xvfb dbus dbus-bin dbus-daemon at-spi2-core python3 python3-pyatspi
          clang-format clang libclang-rt-14-dev ccache)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
