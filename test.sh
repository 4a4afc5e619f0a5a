#!/usr/bin/env bash
# Builds Tallyrun with its tests and runs the whole suite.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh
launcher=()
# ccache is a help when it is there, not a requirement.
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
# Let ccache keep compiles that use the precompiled headers.
export CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
# Paths relative to the checkout, so that another clone of the same sources finds its compiles.
export CCACHE_BASEDIR="$PWD" CCACHE_NOHASHDIR=true
cmake -S . -B build/test -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTALLYRUN_TESTS=ON -DTALLYRUN_BENCH=ON \
      -DTALLYRUN_WERROR=ON "${launcher[@]}" >/dev/null
cmake --build build/test
export QT_QPA_PLATFORM=offscreen
cd build/test && ctest --output-on-failure -j2 --timeout 300
