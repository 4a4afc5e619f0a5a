#!/usr/bin/env bash
# Builds Tallyrun with its tests and runs the whole suite.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh
launcher=()
# ccache is a help when it is there, not a requirement.
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTALLYRUN_TESTS=ON -DTALLYRUN_BENCH=ON \
      -DTALLYRUN_WERROR=ON "${launcher[@]}" >/dev/null
cmake --build build/test
export QT_QPA_PLATFORM=offscreen
cd build/test && ctest --output-on-failure -j2 --timeout 300
