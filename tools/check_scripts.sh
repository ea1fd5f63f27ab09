#!/usr/bin/env bash
# Runs the recipes of the guide for scripts and for git as they are printed, beside simulated panels, with the
# programs of build/release.
set -euo pipefail
cd "$(dirname "$0")/.."
source packaging/packages.sh
install_missing mosquitto mosquitto-clients systemd git
root=$PWD
PATH="$root/build/release/bin:$PATH"

page=$root/docs/guide/scripts.md
complain() {
  echo "$page: $1" >&2
  exit 1
}
# The code below a heading of the page: the block of that number and language.
recipe() {
  awk -v heading="## $1" -v fence="\`\`\`$2" -v wanted="$3" '
    /^## / { here = $0 == heading }
    here && $0 == fence { inside = ++count == wanted; next }
    /^```$/ { inside = 0 }
    inside' "$page"
}
until_true() {
  for _ in $(seq 100); do
    "$@" && return
    sleep 0.1
  done
  return 1
}

work=$(mktemp -d)
started=()
trap 'for group in "${started[@]}"; do kill -- "-$group" 2>/dev/null || true; done; rm -rf "$work"' EXIT
export HOME=$work/home
mkdir "$HOME" "$work/panels"
# In a process group of its own, with all that it starts.
start() {
  setsid "$@" &
  started+=($!)
}
cd "$work"

port() { sed -n 's/^TCP: 127.0.0.1 port //p' "$1.log"; }
for panel in office annex; do
  start tamberloom3-panel --tcp 0 </dev/null >"$panel.log" 2>&1
  until_true grep -q ' port ' "$panel.log"
  echo "$panel tcp:127.0.0.1:$(port "$panel")" >>panels/panels.list
done
PANEL=tcp:127.0.0.1:$(port office)
export PANEL

# The broker.
start mosquitto -p 18839 >mosquitto.log 2>&1
until_true mosquitto_pub -p 18839 -t lights -m begin 2>/dev/null || complain "there is no broker"
mkdir bin
for client in mosquitto_pub mosquitto_sub; do
  printf '#!/bin/sh\nexec /usr/bin/%s -p 18839 "$@"\n' $client >bin/$client
  chmod +x bin/$client
done
PATH="$work/bin:$PATH"
start mosquitto_sub -t lights >lights.log
start bash -c "$(recipe 'Lights on a message broker' sh 1)"
start bash -c "$(recipe 'Lights on a message broker' sh 2)"
switched() {
  mosquitto_pub -t switch -m 'RELAY 05 on'
  sleep 0.5
  grep -q '"Is":"on","Item":"RELAY 05"' lights.log
}
until_true switched || complain "no message tells of RELAY 05"

# The nightly copy.
recipe 'A nightly copy of many panels' sh 1 >bin/backup-panels
chmod +x bin/backup-panels
commits() { git -C panels rev-list --count HEAD; }
backup-panels panels || complain "the copy of all panels failed"
[ "$(git -C panels ls-files | tr '\n' ' ')" = "annex.txt office.txt " ] || complain "a text is missing"
backup-panels panels
[ "$(commits)" = 1 ] || complain "panels that have not changed make a commit"
echo "gone tcp:127.0.0.1:1" >>panels/panels.list
tamberloom3-project read "$PANEL" a.T3
tamberloom3-project read "tcp:127.0.0.1:$(port annex)" b.T3 --no-names
TAMBERLOOM3_PASSWORD=000000 tamberloom3-project send b.T3 "$PANEL"
if backup-panels panels 2>told.log; then complain "a panel that is gone is no failure"; fi
grep -q 'tcp:127.0.0.1:1: ' told.log || complain "a panel that is gone is not told"
[ "$(commits)" = 2 ] || complain "a panel that has changed makes no commit"
recipe 'A nightly copy of many panels' ini 1 >backup-panels.service
recipe 'A nightly copy of many panels' ini 2 >backup-panels.timer
sed -i "s#/usr/local/bin#$work/bin#" backup-panels.service
systemd-analyze verify ./backup-panels.service ./backup-panels.timer

# Many at once.
sed -i '/^gone/d' panels/panels.list
(cd panels && bash -c "$(recipe 'Forty panels at once' sh 1)")
tamberloom3-project compare panels/office.T3 b.T3 || complain "office.T3 is not what the panel holds"

# The same changes to another copy.
cp panels/office.T3 office.T3
bash -c "$(recipe 'Changes from one project to another' sh 1)"
tamberloom3-project compare panels/office.T3 office.T3 >changes || true
cp panels/office.T3 copy.T3
tamberloom3-project apply copy.T3 changes
tamberloom3-project compare office.T3 copy.T3 || complain "a copy is not what was compared"

# A check of what git knows.
git init -q known
(cd known && cp ../panels/office.T3 'an office.T3' && git add . &&
  bash -c "$(recipe 'A check of many projects' sh 1)" >../checked) || complain "a sound project fails"
[ "$(cut -f 1,2 checked | tail -n +2 | sort -u)" = "$(printf 'an office.T3\twarning')" ] ||
  complain "a list of files is not checked"

# Two branches of one project.
page=$root/docs/guide/files.md
git init -q merged
cd merged
git config user.name Somebody
git config user.email somebody@localhost
bash -c "$(recipe 'Two people, one project' sh 1)"
cp ../panels/office.T3 .
save() {
  git add .
  git commit -q -m "$1"
}
power_on() {
  printf 'Relays\t%s\tpower-on type\tOff\t%s\n' "$1" "$2" | tamberloom3-project apply office.T3 -
  save "$1"
}
save "Before"
bash -c "$(recipe 'The same in a script' sh 1)"
printf 'Names\tRELAY 05\tname\tRELAY 05\tKÜCHE\n' | tamberloom3-project apply office.T3 -
git diff >../diff
grep -q '^+.*KÜCHE' ../diff || complain "git diff does not tell a name"
git checkout -q office.T3
git checkout -q -b theirs
power_on 'RELAY 05' On
git checkout -q -
power_on 'RELAY 06' 'Last State'
git merge -q -m "Both" theirs || complain "two settings are in conflict"
tamberloom3-project compare ../panels/office.T3 office.T3 >../both || true
[ "$(cut -f 2,5 ../both | tail -n +2)" = "$(printf 'RELAY 05\tOn\nRELAY 06\tLast State')" ] ||
  complain "a merge does not hold what both changed"
power_on 'RELAY 07' On
git checkout -q theirs
power_on 'RELAY 07' On/In:1
if git merge -m "Both again" - >../told; then complain "a setting that both changed makes no conflict"; fi
grep -q "$(printf '^office.T3\tRelays\tRELAY 07\tpower-on type\tOff\tOn/In:1\tOn$')" ../told ||
  complain "a conflict is not told"
[ "$(git diff --name-only --diff-filter=U)" = office.T3 ] || complain "no file is in conflict"
