#!/usr/bin/env bash
# Builds and runs every test: a short fuzzing run of the binary file readers, the normal build,
# and the AddressSanitizer and UndefinedBehaviorSanitizer build.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh

export QT_QPA_PLATFORM=offscreen
export TAVIK_AUDIO=null
jobs=$(nproc)

echo "== fuzzers"
CC=clang CXX=clang++ cmake -S . -B build-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVIK_FUZZ=ON \
    -DTAVIK_BUILD_TESTS=OFF -DTAVIK_BUILD_BENCH=OFF >/dev/null
# A short coverage-guided run of one reader's fuzzer from its seed corpus.
fuzz() {
    local target=$1 seeds=$2 corpus
    cmake --build build-fuzz -j"$jobs" --target "$target"
    corpus=$(mktemp -d)
    cp "$seeds"/* "$corpus"/
    "build-fuzz/fuzz/$target" -runs=200000 -max_total_time=30 -max_len=4096 \
        -rss_limit_mb=1024 -malloc_limit_mb=256 "$corpus" 2>&1 | tail -n 1
    rm -rf "$corpus"
}
fuzz fuzz_package_index fuzz/corpus/package_index
fuzz fuzz_service fuzz/corpus/service

echo "== build and test"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"

echo "== sanitizer build and test"
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DTAVIK_SANITIZE=ON -DTAVIK_BUILD_BENCH=OFF >/dev/null
cmake --build build-asan -j"$jobs"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ctest --test-dir build-asan --output-on-failure -j"$jobs"
