#!/usr/bin/env bash
# Makes the guide's pictures anew: those of its pages about screens, on the project of
# tools/town_hall.cpp, and those of its first chapter, which the tour takes as it goes.
set -euo pipefail
cd "$(dirname "$0")/.."
pictures=docs/guide/pictures
cmake --preset test >/dev/null
cmake --build build/test --target tamberloom3-guide-pictures tamberloom_tests
export QT_QPA_PLATFORM=offscreen QT_FONT_DPI=96
build/test/tools/tamberloom3-guide-pictures "$pictures"
tour=/tmp/kim # which the pictures show
mkdir "$tour"
trap 'rm -rf /tmp/kim' EXIT
TAMBERLOOM_TOUR_PICTURES="$tour" build/test/tests/tamberloom_tests --gtest_filter='Tour*' >/dev/null
for picture in "$tour"/*.png; do
  name=$(basename "$picture")
  if [ -f "$pictures/$name" ]; then mv "$picture" "$pictures/$name"; fi
done
git status --short "$pictures"
