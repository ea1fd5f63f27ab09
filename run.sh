#!/usr/bin/env bash
# From a fresh Debian 12 machine to the program on screen beside a simulated panel.
set -euo pipefail
cd "$(dirname "$0")"
source packaging/packages.sh
install_missing "${build_packages[@]}" fonts-dejavu-core

display=${DISPLAY:-}${WAYLAND_DISPLAY:-}
cmake --preset run >/dev/null
cmake --build build/run --target tamberloom3 tamberloom3-panel ${display:+tamberloom3-panel-window}

rm -rf build/home build/runtime build/connected.png
mkdir -p build/home
# What nobody sees leaves nothing in the user's own folder.
[ -n "$display" ] || export HOME="$PWD/build/home"
if [ ! -w "${XDG_RUNTIME_DIR:-/nowhere}" ]; then
  export XDG_RUNTIME_DIR="$PWD/build/runtime"
  mkdir -m 700 "$XDG_RUNTIME_DIR"
fi

panel=build/run/bin/tamberloom3-panel
panel_arguments=(--log build/panel.log)
# Another panel may have the first.
for port in COM{16..9}; do
  echo quit | "$panel" --pty --link "$port" >/dev/null 2>&1 && break
done
panel_arguments+=(--pty --link "$port")
address=
# The program knows this port alone; another panel may have it at the first address.
for host in 127.0.0.{1..9}; do
  echo quit | "$panel" --host "$host" --tcp 10001 >/dev/null 2>&1 || continue
  address=$host
  panel_arguments+=(--host "$host" --tcp 10001)
  break
done
[ -z "$display" ] || panel_arguments+=(--window --beside 0,0,740,600)

children=()
trap 'kill "${children[@]}" 2>/dev/null; wait' EXIT
"$panel" "${panel_arguments[@]}" </dev/null >build/panel.out 2>&1 &
children+=($!)
running() { kill -0 "${children[0]}" 2>/dev/null; }
sleep 0.5
# Without a window it tells when it is ready.
until [ -n "$display" ] || grep -q '^Serial:' build/panel.out || ! running; do sleep 0.1; done
running || {
  cat build/panel.out >&2
  exit 1
}
# A machine can have an address that leads nowhere.
[ -n "$display" ] || (exec 3<>"/dev/tcp/$address/10001") 2>/dev/null || address=
if [ -n "$address" ]; then
  echo "The simulated panel answers on TCP $address (port 10001) and on $port."
else
  echo "The simulated panel answers on $port only; TCP port 10001 is taken or cannot be reached."
fi

if [ -n "$display" ]; then
  build/run/bin/tamberloom3
else
  source packaging/picture.sh
  take_picture build/connected.png "$address" "$port"
  echo "A picture of the program, connected to the simulated panel: build/connected.png"
fi
