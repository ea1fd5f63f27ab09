#!/usr/bin/env bash
# Fails when a screen has no page in docs/guide, a page lacks a part or is missing in the contents,
# or a link or a picture leads nowhere.
set -euo pipefail
cd "$(dirname "$0")/../docs/guide"

wrong=0
complain() {
  echo "docs/guide/$1" >&2
  wrong=1
}

# A screen's page has its name: frmT3RelayStatus stands in relay_status.md.
screens=$(grep -o '{Screen::[A-Za-z0-9]*, "[^"]*"' ../../src/panel/screens.h | cut -d'"' -f2) || {
  complain "no screen is found in src/panel/screens.h"
}
for screen in $screens; do
  page=$(sed -E 's/^frmT3//; s/([a-z])([A-Z])/\1_\2/g' <<<"$screen" | tr '[:upper:]' '[:lower:]').md
  [ -f "$page" ] || { complain "$page, the page of $screen, is missing" && continue; }
  for part in '!\[.*\](pictures/' '## Controls' '## On the panel' '## Mistakes of the first day' \
    '## See also'; do
    grep -q "^$part" "$page" || complain "$page has no \"$part\""
  done
done

for page in *.md; do
  [ "$page" = index.md ] || grep -q "]($page)" index.md || complain "index.md leaves out $page"
  while read -r target; do
    [ -f "${target%%#*}" ] || complain "$page: there is no $target"
  done < <(grep -o '](\([^)]*\))' "$page" | sed 's/^](//; s/)$//' | grep -v '^https\?:' || true)
done
for picture in pictures/*; do
  grep -q "]($picture)" ./*.md || complain "$picture is on no page"
done
exit $wrong
