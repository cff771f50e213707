#!/usr/bin/env bash
# Builds and runs the demo host. Without a display it writes a screenshot.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/deps.sh"
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=Release -DTABULA_BUILD_TESTS=OFF -DTABULA_BUILD_BENCH=OFF >/dev/null
cmake --build "$root/build" --target tabula_demo -j"$(nproc)"
cd "$root/build" && ./demo/tabula_demo "$@"
