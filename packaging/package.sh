#!/usr/bin/env bash
# Makes the Debian package in build/release.
set -euo pipefail
cd "$(dirname "$0")/.."
source packaging/packages.sh
install_missing "${build_packages[@]}" dpkg-dev file help2man

# What is made tells of the newest entry of the changelog, not of the day on which it is made.
SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l packaging/changelog -S Timestamp)
export SOURCE_DATE_EPOCH
umask 022
cmake --preset release >/dev/null
cmake --build build/release
rm -f build/release/*.deb
(cd build/release && cpack >/dev/null)
package=$(echo build/release/*.deb)
# Without them it would be made all the same, and only warn.
dpkg-deb --field "$package" Depends | grep -q qt6 || {
  echo "The libraries that the programs need have not been found." >&2
  exit 1
}
echo "The package: $package"
