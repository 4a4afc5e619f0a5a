#!/usr/bin/env bash
# Builds Tallyrun with its tests and runs the whole suite.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh
cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTALLYRUN_TESTS=ON -DTALLYRUN_BENCH=ON >/dev/null
cmake --build build/test
export QT_QPA_PLATFORM=offscreen
cd build/test && ctest --output-on-failure -j2 --timeout 300
