#!/usr/bin/env bash
# Builds every test with AddressSanitizer and UndefinedBehaviorSanitizer
# (LeakSanitizer included) in build-asan/ and runs the whole suite there,
# the GUI tests too. Leaks that belong to the system libraries under Qt are
# listed, one reason each, in tests/lsan.supp.
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DDRAV_SANITIZE=address,undefined \
  -DDRAV_BUILD_BENCH=OFF -DDRAV_WERROR=ON >/dev/null
cmake --build build-asan --parallel "$(nproc)"
# libxkbcommon-x11 hands strndup a buffer without a terminator when the
# program connects to an X server; ASan's strndup check flags that inside
# the system library, before any of Drav's code has run.
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0:intercept_strndup=0
export LSAN_OPTIONS=suppressions=$PWD/tests/lsan.supp:print_suppressions=0
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir build-asan --output-on-failure --parallel "$(nproc)"
# The selection library shares work between two threads (reading ahead,
# formatting rows in blocks, summing terms in halves): its tests again under
# ThreadSanitizer, which cannot run beside ASan.
cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DDRAV_SANITIZE=thread -DDRAV_BUILD_GUI=OFF \
  -DDRAV_BUILD_BENCH=OFF -DDRAV_WERROR=ON >/dev/null
cmake --build build-tsan --parallel "$(nproc)" --target test_delimited_reader test_shared_reading test_bucket_sort test_writers test_term_averaging
export TSAN_OPTIONS=halt_on_error=1
for test in test_delimited_reader test_shared_reading test_bucket_sort test_writers test_term_averaging; do ./build-tsan/tests/$test >/dev/null; done
echo "ThreadSanitizer: the selection library's threaded tests passed"
