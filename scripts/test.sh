#!/usr/bin/env bash
# Builds and runs every test: a short fuzzing run of the binary file readers, the normal build,
# the AddressSanitizer and UndefinedBehaviorSanitizer build, and the Windows build with its
# tests under Wine.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
bash scripts/windows/packages.sh

export QT_QPA_PLATFORM=offscreen
export TAVIK_AUDIO=null
jobs=$(nproc)
total=$SECONDS
mkdir -p build-win

# The Windows build's libraries (Qt and the sound libraries, cross-built once into a cache) take
# long the first time. They build in the background at idle priority while the Linux builds and
# tests run, and so take only the processor time those leave.
echo "== Windows libraries (in the background, build-win/libraries.log)"
setsid chrt --idle 0 bash -c 'bash scripts/windows/qt.sh && bash scripts/windows/libs.sh' \
    >build-win/libraries.log 2>&1 &
libraries=$!
# A failed Linux part stops them (their own process group) instead of leaving them running.
stop_libraries() { kill -- -"$libraries" 2>/dev/null || true; }
trap stop_libraries EXIT

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
echo "== (fuzzers done at $((SECONDS - total)) s)"

echo "== build and test"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"
echo "== (Linux tests done at $((SECONDS - total)) s)"

echo "== sanitizer build and test"
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=Debug -DTAVIK_SANITIZE=ON -DTAVIK_BUILD_BENCH=OFF >/dev/null
cmake --build build-asan -j"$jobs"
ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    ctest --test-dir build-asan --output-on-failure -j"$jobs"
echo "== (sanitizer tests done at $((SECONDS - total)) s)"

echo "== Windows build and its tests under Wine"
if ! wait "$libraries"; then
    tail -n 40 build-win/libraries.log >&2
    exit 1
fi
trap - EXIT
grep '^windows:' build-win/libraries.log || true
echo "== (Windows libraries ready at $((SECONDS - total)) s)"
TAVIK_WIN_TESTS=ON scripts/windows.sh
scripts/windows/test.sh
echo "== (all done at $((SECONDS - total)) s)"
