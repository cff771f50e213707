#!/usr/bin/env bash
# Builds and runs every test headless. TABULA_SANITIZE=ON builds them with
# AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/deps.sh"
sanitize=${TABULA_SANITIZE:-OFF}
build="$root/build-tests"
[ "$sanitize" = ON ] && build="$root/build-sanitize"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DTABULA_SANITIZE="$sanitize" \
    -DTABULA_BUILD_DEMO=OFF -DTABULA_BUILD_BENCH=OFF >/dev/null
cmake --build "$build" -j"$(nproc)"
export QT_QPA_PLATFORM=offscreen
ctest --test-dir "$build" --output-on-failure -j"$(nproc)"
