#!/usr/bin/env bash
# Sanitizer jobs. Each builds into its own folder and runs tests; any sanitizer report fails.
#   bash scripts/run_sanitizers.sh address   # AddressSanitizer + UndefinedBehaviorSanitizer +
#                                            # LeakSanitizer, the whole suite (build-asan)
#   bash scripts/run_sanitizers.sh thread    # ThreadSanitizer, the tests labelled "threads" only
#                                            # (build-tsan), built through the target wgt_threaded_tests
# Both build against Qt 5, whose reports the suppression files know.
# WGT_SANITIZE_BUILD_DIR overrides the folder; WGT_JOBS and WGT_CTEST_JOBS the parallel build jobs
# and test processes (default 2 each: many tests mostly wait on timers and threads).
set -euo pipefail
cd "$(dirname "$0")/.."
mode="${1:-}"
jobs="${WGT_JOBS:-2}"
ctest_jobs="${WGT_CTEST_JOBS:-2}"
case "$mode" in
address)
    dir="${WGT_SANITIZE_BUILD_DIR:-build-asan}"
    cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=Debug -DWGT_SANITIZE=address,undefined \
        -DWGT_BUILD_BENCH=OFF -DWGT_QT_MAJOR=5
    cmake --build "$dir" -j"$jobs"
    export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:halt_on_error=1:detect_stack_use_after_return=0"
    export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
    # The install test builds an outside consumer against the package; it is left to the plain job.
    ctest --test-dir "$dir" --output-on-failure -j"$ctest_jobs" -E '^install_and_consume_package$'
    ;;
thread)
    dir="${WGT_SANITIZE_BUILD_DIR:-build-tsan}"
    cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=Debug -DWGT_SANITIZE=thread \
        -DWGT_BUILD_BENCH=OFF -DWGT_BUILD_DEMO=OFF -DWGT_QT_MAJOR=5
    cmake --build "$dir" -j"$jobs" --target wgt_threaded_tests
    export TSAN_OPTIONS="${TSAN_OPTIONS:-halt_on_error=1 second_deadlock_stack=1}"
    ctest --test-dir "$dir" --output-on-failure -j"$ctest_jobs" -L threads
    ;;
*)
    echo "usage: $0 address|thread" >&2
    exit 2
    ;;
esac
