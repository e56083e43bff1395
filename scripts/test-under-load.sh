#!/usr/bin/env bash
# Runs the whole test suite several times in a row, each time with a new, empty home folder,
# while both cores are kept busy by another job: tests that lean on a machine's speed or on
# what earlier runs left behind fail here. Usage: test-under-load.sh [runs] [ctest args...]
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
runs="${1:-5}"
shift || true
export BUILD_DIR="${BUILD_DIR:-$here/build}"
bash "$here/scripts/build.sh"
stress-ng --cpu "$(nproc)" --quiet &
stress=$!
trap 'kill "$stress" 2>/dev/null' EXIT
failed=0
for run in $(seq 1 "$runs"); do
    echo "=== run $run of $runs"
    # Each run in a shell of its own, so that each gets its own empty home folder.
    if ! bash -c 'source "$1/scripts/fresh-home.sh"; cd "$BUILD_DIR"; QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)" "${@:2}"' \
        _ "$here" "$@"; then
        failed=$((failed + 1))
    fi
done
echo "$failed of $runs runs failed"
[ "$failed" -eq 0 ]
