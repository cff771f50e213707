#!/usr/bin/env bash
# Builds the random-operation harness with AddressSanitizer and
# UndefinedBehaviorSanitizer and runs it, one runner per core on its own seed
# range, for the given minutes (default 10). Further arguments go to every
# runner, e.g. scripts/fuzz.sh 30 --steps 500.
# FUZZ_SEED fixes the first seed (default: the current time). FUZZ_RELEASE=1
# builds optimised instead, with the cache checks on and no sanitizers.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
minutes=${1:-10}
shift || true
"$root/scripts/deps.sh"
build="$root/build-fuzz"
config=(-DCMAKE_BUILD_TYPE=Debug -DTABULA_SANITIZE=ON)
if [[ ${FUZZ_RELEASE:-0} == 1 ]]; then
    build="$root/build-fuzz-release"
    config=(-DCMAKE_BUILD_TYPE=Release -DTABULA_CACHE_CHECKS=ON -DTABULA_SANITIZE=OFF)
fi
launcher=()
command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S "$root" -B "$build" "${config[@]}" -DTABULA_BUILD_FUZZ=ON \
    -DTABULA_BUILD_TESTS=OFF -DTABULA_BUILD_BENCH=OFF -DTABULA_BUILD_DEMO=OFF "${launcher[@]}" >/dev/null
cmake --build "$build" -j"$(nproc)" --target tabula_fuzz
export QT_QPA_PLATFORM=offscreen
seed=${FUZZ_SEED:-$(date +%s)}
pids=()
for ((j = 0; j < $(nproc); j++)); do
    "$build/fuzz/tabula_fuzz" --seed $((seed + j * 100000000)) --seconds $((minutes * 60)) --steps 300 \
        --keep-going "$@" >"$build/fuzz-$j.log" 2>&1 &
    pids+=($!)
done
status=0
for pid in "${pids[@]}"; do
    wait "$pid" || status=1
done
for log in "$build"/fuzz-*.log; do
    echo "== $log"
    cat "$log"
done
exit $status
