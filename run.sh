#!/usr/bin/env bash
# Builds Tallyrun in Release and starts it on the active store.
set -euo pipefail
cd "$(dirname "$0")"
tools/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DTALLYRUN_TESTS=OFF >/dev/null
cmake --build build/release --target tallyrun
exec build/release/tallyrun "$@"
