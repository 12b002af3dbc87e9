#!/usr/bin/env bash
# The walk through the accessibility bus, with everything it needs started here and stopped at the
# end: a virtual display (Xvfb), a private session bus (dbus-run-session), and inside it the
# accessibility bus launcher and registry, the probe program and the pyatspi script.
# Usage: run_atspi_walk.sh <probe program> <python3 with pyatspi> <at-spi-bus-launcher>
set -euo pipefail
probe=$1
python=$2
launcher=$3
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
xvfb_pid=""
cleanup() {
    if [ -n "$xvfb_pid" ]; then kill "$xvfb_pid" 2>/dev/null || true; fi
    rm -rf "$work"
}
trap cleanup EXIT

# Xvfb picks a free display and writes its number to descriptor 3.
Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$work/display" >"$work/xvfb.log" 2>&1 &
xvfb_pid=$!
for _ in $(seq 1 100); do
    [ -s "$work/display" ] && break
    sleep 0.1
done
if [ ! -s "$work/display" ]; then
    echo "Xvfb did not start:"
    cat "$work/xvfb.log"
    exit 1
fi
export DISPLAY=":$(head -n 1 "$work/display")"
# A real window on the virtual display (the suite's tests run offscreen), with Qt's bridge on
# whatever the bus says.
export QT_QPA_PLATFORM=xcb
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
unset AT_SPI_BUS_ADDRESS NO_AT_BRIDGE
echo "display $DISPLAY"
dbus-run-session -- "$python" "$here/atspi_walk.py" --probe "$probe" --launcher "$launcher"
