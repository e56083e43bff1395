#!/usr/bin/env bash
# Installs what is missing, builds from scratch with AddressSanitizer and
# UndefinedBehaviorSanitizer (LeakSanitizer included) and runs every test headless.
# Any sanitizer report ends its test with an error, so it fails the run.
set -euo pipefail
here="$(cd "$(dirname "$0")/.." && pwd)"
build="${BUILD_DIR:-$here/build-asan}"
bash "$here/scripts/install-deps.sh"
rm -rf "$build"
# Debug: unoptimised code builds quickest, and the tests still run in seconds under the sanitizers.
cmake -S "$here" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DVX_SANITIZE=ON
cmake --build "$build" -j"$(nproc)"

source "$here/scripts/fresh-home.sh"
export QT_QPA_PLATFORM=offscreen
# Allocations too large for memory must fail as they do without the sanitizer: the
# program reports them instead of ending.
export ASAN_OPTIONS=allocator_may_return_null=1:halt_on_error=1:detect_leaks=1:detect_stack_use_after_return=1:check_initialization_order=1:strict_init_order=1
# The normal run takes the random user through its full count; here a shorter walk is enough
# for the sanitizers to see every action at work, and keeps CI within its time.
export VX_RANDOM_ACTIONS=1500
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export LSAN_OPTIONS="suppressions=$here/tests/sanitizers/lsan.supp:print_suppressions=0"
cd "$build"
bash "$here/scripts/run-ctest.sh" "$@"
