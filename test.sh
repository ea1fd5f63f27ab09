#!/usr/bin/env bash
# From a fresh Debian 12 machine to all tests passed.
set -euo pipefail
cd "$(dirname "$0")"
source packaging/packages.sh
install_missing "${build_packages[@]}" libgtest-dev clang libclang-rt-14-dev

cmake --preset test >/dev/null
cmake --build build/test
QT_QPA_PLATFORM=offscreen ctest --test-dir build/test --output-on-failure -j "$(nproc)"
