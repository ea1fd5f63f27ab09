#!/usr/bin/env bash
# Runs clang-tidy over the files that the last day's commits have changed, the newest first; a large
# change is looked at in part here and whole by hand.
set -euo pipefail
cd "$(dirname "$0")/.."
most=8
cmake --preset tidy >/dev/null
cmake --build build/tidy --target tamberloom_core_autogen tamberloom_line_autogen tamberloom_app_autogen >/dev/null
last=$(git log -1 --format=%ct)
git log --since=$((last - 86400)) --name-only --format= -- 'src/*.cpp' 'simulator/*.cpp' |
  awk '!seen[$0]++' | while read -r file; do if [ -e "$file" ]; then echo "$file"; fi; done |
  awk -v most="$most" 'NR <= most' |
  xargs -r -P"$(nproc)" -n4 clang-tidy --quiet -p build/tidy
