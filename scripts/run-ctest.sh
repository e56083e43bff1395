#!/usr/bin/env bash
# Runs ctest in the current build folder. When tests fail, their failure lines are repeated
# at the very end, so that a log cut to its last lines still says what failed and why.
set -uo pipefail
ctest --output-on-failure -j"$(nproc)" "$@"
status=$?
if [ "$status" -ne 0 ] && [ -f Testing/Temporary/LastTest.log ]; then
    echo "==== Failures (from Testing/Temporary/LastTest.log) ===="
    awk '/^[0-9]+\/[0-9]+ Testing: / { test = $3 }
         /Loc: \[/ && failed { print test ": " $0 }
         { failed = 0 }
         /FAIL!|QFATAL|ERROR: AddressSanitizer|ERROR: LeakSanitizer|runtime error:|never became active|never enabled|never took|Timeout|Segmentation|Subprocess aborted/ {
             print test ": " substr($0, 1, 400); failed = 1 }' Testing/Temporary/LastTest.log | head -150
fi
exit "$status"
