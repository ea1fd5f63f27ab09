#!/usr/bin/env bash
# Fails on an include that the table of arrows in docs/developers.md does not have.
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A allowed
while IFS='|' read -r _ folder _ includes _; do
  folder=$(tr -d '` ' <<<"$folder")
  allowed[$folder]=" $({ grep -o '`[^`]*`' <<<"$includes" || true; } | tr -d '`' | tr '\n' ' ') "
done < <(sed -n '/<!-- arrows -->/,/<!-- end -->/p' docs/developers.md | grep '^| `')

wrong=0
while IFS=: read -r file _ line; do
  from=${file#src/}
  folder=${from%/*}
  [ "$folder" = "$from" ] && continue # beside main.cpp, which knows all
  target=$(cut -d'"' -f2 <<<"$line")
  to=${target%/*}
  home=${folder%/rules}
  case "$to" in "$folder" | "$home/rules") continue ;; esac
  [ "$to" = "$home" ] && [ "$folder" = "$home" ] && continue
  if [[ "${allowed[$folder]-}" != *" $to "* ]]; then
    echo "$file may not include $target" >&2
    wrong=1
  fi
done < <(grep -rn '^#include "' src simulator --include='*.h' --include='*.cpp')
# What computes is handed a project; only screens know which one is open.
if grep -rn '^#include "panel/live_' src/*/rules src/project --include='*.h' --include='*.cpp' >&2; then
  wrong=1
fi
exit $wrong
