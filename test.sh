#!/usr/bin/env bash
# From a fresh Debian 12 machine to all tests passed.
set -euo pipefail
cd "$(dirname "$0")"
source packaging/packages.sh
install_missing "${build_packages[@]}" libgtest-dev clang libclang-rt-14-dev

failed=0
cmake --preset test >/dev/null
cmake --build build/test
QT_QPA_PLATFORM=offscreen ctest --test-dir build/test --output-on-failure -j "$(nproc)" || failed=1

cmake --preset fuzz >/dev/null
cmake --build build/fuzz --target project_codec_fuzz
build/fuzz/tests/fuzz/project_codec_fuzz -runs=20000 -seed=1 -max_len=200000 -print_final_stats=1 \
  -artifact_prefix=build/ build/fuzz/tests/fuzz/seeds 2>&1 | tail -n 12
exit "$failed"
