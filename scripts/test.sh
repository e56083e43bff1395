#!/usr/bin/env bash
# Installs what is missing, builds from scratch in a fresh folder and runs every test headless.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
export BUILD_DIR="${BUILD_DIR:-$here/build-test}"
rm -rf "$BUILD_DIR"
bash "$here/scripts/build.sh"
source "$here/scripts/fresh-home.sh"
export QT_QPA_PLATFORM=offscreen
cd "$BUILD_DIR"
bash "$here/scripts/run-ctest.sh" "$@"
