#!/usr/bin/env bash
# Builds the package from build/release, has Debian's own checkers read it, and starts the programs
# from it.
set -euo pipefail
cd "$(dirname "$0")/.."
source packaging/packages.sh
install_missing help2man lintian desktop-file-utils appstream xvfb xauth

desktop-file-validate packaging/*.desktop
appstreamcli validate --pedantic --no-net packaging/*.metainfo.xml || {
  # The one thing that may be noted is the missing home page of the placeholder address.
  appstreamcli validate --no-net packaging/*.metainfo.xml
}

cmake --preset release >/dev/null
cmake --build build/release
rm -rf build/package build/release/*.deb
(cd build/release && cpack -G DEB >/dev/null)
lintian --allow-root --fail-on error,warning build/release/*.deb
dpkg-deb -x build/release/*.deb build/package

bin=build/package/usr/bin
"$bin/tamberloom3-panel" --version
"$bin/tamberloom3-project" --version
export HOME="$PWD/build/package/home"
mkdir -p "$HOME"
# They run until they are ended.
for program in tamberloom3 "tamberloom3-panel --window --tcp 0"; do
  status=0
  timeout --signal=TERM 5 xvfb-run -a "$bin"/$program || status=$?
  [ "$status" -eq 124 ] || {
    echo "$program of the package ended by itself with status $status." >&2
    exit 1
  }
done
