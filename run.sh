#!/usr/bin/env bash
# From a fresh Debian 12 machine to the program on screen beside a simulated panel.
set -euo pipefail
cd "$(dirname "$0")"
source packaging/packages.sh
install_missing "${build_packages[@]}" fonts-dejavu-core

cmake --preset release >/dev/null
cmake --build build/release

port=10001
panel_arguments=(--pty --link COM16 --log build/panel.log)
if (exec 3<>"/dev/tcp/127.0.0.1/$port") 2>/dev/null; then
  answers="on COM16 only, as TCP port $port is taken"
else
  panel_arguments+=(--tcp "$port")
  answers="on TCP 127.0.0.1 (port $port) and on COM16"
fi

display=${DISPLAY:-}${WAYLAND_DISPLAY:-}
[ -z "$display" ] || panel_arguments+=(--window)

children=()
trap 'kill "${children[@]}" 2>/dev/null; wait' EXIT
build/release/simulator/tamberloom3-panel "${panel_arguments[@]}" </dev/null >build/panel.out 2>&1 &
children+=($!)
sleep 0.5
kill -0 "${children[0]}" 2>/dev/null || {
  cat build/panel.out >&2
  exit 1
}
echo "The simulated panel answers $answers."

if [ -n "$display" ]; then
  build/release/tamberloom3
else
  source packaging/picture.sh
  take_picture build/connected.png
fi
