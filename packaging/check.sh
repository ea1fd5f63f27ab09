#!/usr/bin/env bash
# Makes the package, has Debian's own checkers read it, looks for what must be in it, and starts the
# programs from it.
set -euo pipefail
cd "$(dirname "$0")/.."
source packaging/packages.sh
install_missing binutils lintian desktop-file-utils appstream devscripts mandoc xvfb xauth

desktop-file-validate packaging/*.desktop
appstreamcli validate --pedantic --no-net packaging/*.metainfo.xml || {
  # The one thing that may be noted is the missing home page of the placeholder address.
  appstreamcli validate --no-net packaging/*.metainfo.xml
}

packaging/package.sh
lintian --allow-root --fail-on error,warning build/release/*.deb
rm -rf build/package
dpkg-deb -x build/release/*.deb build/package

complain() {
  echo "$1" >&2
  exit 1
}
depends=$(dpkg-deb --field build/release/*.deb Depends)
for library in libc6 libnova libqt6core6 libqt6network6 libqt6printsupport6 libqt6serialport6 \
  libqt6widgets6 libstdc++6 libxlsxwriter; do
  [[ $depends == *"$library"* ]] || complain "The package does not depend on $library."
done
for part in share/man/man1/tamberloom3{,-panel,-project}.1.gz \
  share/bash-completion/completions/tamberloom3-{panel,project} \
  libexec/tamberloom3/tamberloom3-panel-window; do
  [ -s "build/package/usr/$part" ] || complain "$part is missing in the package."
done
for page in build/package/usr/share/man/man1/*.gz; do
  gzip -dc "$page" | mandoc -T lint || complain "$page is not as a man page should be."
done
zgrep -q '^idle\\-timer (warning)' build/package/usr/share/man/man1/tamberloom3-project.1.gz ||
  complain "The man page does not tell the rules of the check."

# What is loaded must not come from the folder that a program happens to be started in.
while IFS= read -r -d '' program; do
  while read -r path; do
    while IFS= read -r -d : place; do
      [[ $place == /* || $place == '$ORIGIN'/* ]] || complain "$program searches \"$place\"."
    done <<<"$path:"
  done < <(readelf -d "$program" 2>/dev/null | sed -n 's/.*R\(UN\)\?PATH.*\[\(.*\)\]$/\2/p')
done < <(find build/release build/package -type f -print0)

# Debian's own start of a program takes the mark of control flow away, and where no call has a size
# that the compiler knows, none is fortified.
while IFS= read -r -d '' program; do
  hardening-check -q --nocfprotection --nofortify "$program" || complain "$program lacks a protection that Debian asks for."
done < <(find build/package/usr/{bin,lib,libexec} -type f \( -perm -100 -o -name '*.so' \) -print0)

# Another folder, another hour, another language: the same package.
rm -rf build/again
mkdir -p "build/again/another folder"
tar -c --exclude=./build --exclude=./.git . | tar -x -C "build/again/another folder"
(umask 077 && cd "build/again/another folder" &&
  TZ=Pacific/Auckland LC_ALL=C CCACHE_DISABLE=1 packaging/package.sh)
cmp build/release/*.deb "build/again/another folder"/build/release/*.deb ||
  complain "Made in another folder, the package is another."
rm -rf build/again

bin=build/package/usr/bin
"$bin/tamberloom3-panel" --version
"$bin/tamberloom3-project" --version
export HOME="$PWD/build/package/home"
mkdir -p "$HOME"
# They run until they are ended.
for program in tamberloom3 "tamberloom3-panel --window --tcp 0"; do
  status=0
  timeout --signal=TERM 5 xvfb-run -a "$bin"/$program || status=$?
  [ "$status" -eq 124 ] || complain "$program of the package ended by itself with status $status."
done
