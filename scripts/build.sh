#!/usr/bin/env bash
# Configures and builds the whole project into build/ (or $BUILD_DIR).
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$here/build}"
bash "$here/scripts/install-deps.sh"
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}"
cmake --build "$build" -j"$(nproc)"
