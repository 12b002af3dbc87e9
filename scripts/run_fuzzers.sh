#!/usr/bin/env bash
# Builds the libFuzzer targets (a clang build with AddressSanitizer and UndefinedBehaviorSanitizer,
# in its own folder) and runs each one for a fixed time on a copy of its corpus.
#
#   scripts/run_fuzzers.sh [build-dir]
#
# Environment:
#   WGT_FUZZ_SECONDS   run time per target in seconds (default 30)
#   WGT_FUZZ_BUILD_DIR build folder (default <repo>/build-fuzz; the first argument wins)
#   WGT_FUZZ_TARGETS   space separated subset of the targets (default: all seven)
#   WGT_FUZZ_JOBS      parallel build jobs, and targets run at the same time (default 2)
#   WGT_FUZZ_WORK_DIR  where the corpus copies and crash files go (default: a new temporary folder)
#
# The repository's corpus is only read. Exit status: 0 when every target ran its time without a
# crash, leak, timeout or out-of-memory; 1 otherwise (the crash files are kept and listed).

set -u

REPO_DIR="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
BUILD_DIR="${1:-${WGT_FUZZ_BUILD_DIR:-${REPO_DIR}/build-fuzz}}"
SECONDS_PER_TARGET="${WGT_FUZZ_SECONDS:-30}"
JOBS="${WGT_FUZZ_JOBS:-2}"
TARGETS="${WGT_FUZZ_TARGETS:-fuzz_basetree_init fuzz_devicetree_init fuzz_stylesheet fuzz_status_batch fuzz_installation fuzz_view_state fuzz_drag_data}"
FUZZ_SRC="${REPO_DIR}/tests/fuzz"

if ! command -v clang++ >/dev/null 2>&1; then
    echo "run_fuzzers: clang++ is needed (Debian: apt-get install clang libclang-rt-14-dev)" >&2
    exit 1
fi

# ---- configure and build only the fuzz targets ---------------------------------------------------
# Without precompiled headers: a clang header set records the absolute paths of its headers, so it
# and every object built on it would differ between two checkouts, and a fresh clone would miss the
# compiler cache for the whole library. Plain objects hit it.
echo "== configuring ${BUILD_DIR}"
if ! CC=clang CXX=clang++ cmake -S "${REPO_DIR}" -B "${BUILD_DIR}" \
        -DCMAKE_BUILD_TYPE=RelWithDebInfo \
        -DWGT_BUILD_FUZZERS=ON \
        -DWGT_SANITIZE=address,undefined \
        -DBUILD_TESTING=OFF -DWGT_BUILD_BENCH=OFF -DWGT_BUILD_DEMO=OFF -DWGT_BUILD_SIBLINGS=OFF -DWGT_QT_MAJOR=5 \
        -DWGT_PRECOMPILE_HEADERS=OFF \
        >"${BUILD_DIR}.configure.log" 2>&1; then
    cat "${BUILD_DIR}.configure.log" >&2
    echo "run_fuzzers: configure failed" >&2
    exit 1
fi
rm -f "${BUILD_DIR}.configure.log"

echo "== building ${TARGETS}"
# shellcheck disable=SC2086
if ! cmake --build "${BUILD_DIR}" --target ${TARGETS} fuzz_param -j"${JOBS}"; then
    echo "run_fuzzers: build failed" >&2
    exit 1
fi

# ---- run -----------------------------------------------------------------------------------------
WORK_DIR="${WGT_FUZZ_WORK_DIR:-$(mktemp -d /tmp/wgt-fuzz.XXXXXX)}"
mkdir -p "${WORK_DIR}"
EMPTY_LIB_DIR="${WORK_DIR}/nolibs"
mkdir -p "${EMPTY_LIB_DIR}"

export QT_QPA_PLATFORM=offscreen
export LSAN_OPTIONS="suppressions=${FUZZ_SRC}/lsan_fuzz.supp"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"

# Each target runs in its own process on one core, so up to JOBS of them run at the same time.
# A target's result line goes to RESULT_DIR/<target>; the summary lists them in the given order.
RESULT_DIR="${WORK_DIR}/results"
mkdir -p "${RESULT_DIR}"

run_target() {
    local TARGET="$1"
    local BIN CORPUS ARTIFACTS LOG EXTRA LIB_DIR TARGET_LSAN_OPTIONS START RC END EXECS FOUND STATUS
    BIN="${BUILD_DIR}/bin/${TARGET}"
    CORPUS="${WORK_DIR}/corpus/${TARGET}"
    ARTIFACTS="${WORK_DIR}/artifacts/${TARGET}"
    LOG="${WORK_DIR}/${TARGET}.log"
    mkdir -p "${CORPUS}" "${ARTIFACTS}"
    if [ -d "${FUZZ_SRC}/corpus/${TARGET}" ]; then
        cp -R "${FUZZ_SRC}/corpus/${TARGET}/." "${CORPUS}/"
    fi
    # Crash inputs of earlier findings seed the run as well: they must stay harmless.
    if [ -d "${FUZZ_SRC}/regressions/inputs/${TARGET}" ]; then
        cp -R "${FUZZ_SRC}/regressions/inputs/${TARGET}/." "${CORPUS}/"
    fi

    EXTRA=()
    LIB_DIR="${EMPTY_LIB_DIR}"
    TARGET_LSAN_OPTIONS="${LSAN_OPTIONS}"
    case "${TARGET}" in
    fuzz_stylesheet)
        # The settings stand-in answers an empty skin: the loader then reads the sheet every time.
        LIB_DIR="${BUILD_DIR}/fuzzlibs"
        EXTRA+=("-dict=${FUZZ_SRC}/fuzz_stylesheet.dict")
        ;;
    fuzz_installation)
        # The keys and reserved ids of the installation format. Full and long stacks for the leak
        # check: the suppression of Qt's JSON parser names a function, not a library, and that
        # function stands below two frames per level of nesting (the target reads up to 96).
        EXTRA+=("-dict=${FUZZ_SRC}/fuzz_installation.dict")
        TARGET_LSAN_OPTIONS="${LSAN_OPTIONS}:fast_unwind_on_malloc=0:malloc_context_size=255"
        ;;
    fuzz_drag_data)
        # The keys of the nodes format. Full and long stacks for the leak check, as for the
        # installation target: the nodes are read by Qt's JSON parser as well, and its suppression
        # names a function below the parser's own frames.
        EXTRA+=("-dict=${FUZZ_SRC}/fuzz_drag_data.dict")
        TARGET_LSAN_OPTIONS="${LSAN_OPTIONS}:fast_unwind_on_malloc=0:malloc_context_size=255"
        ;;
    fuzz_devicetree_init | fuzz_status_batch | fuzz_view_state)
        # The trees' status threads allocate while an input runs, so libFuzzer would take every
        # input for a possible leak and run a full leak scan after each. Leaks are still checked
        # once at exit.
        EXTRA+=("-detect_leaks=0")
        ;;
    esac

    echo "== ${TARGET}: ${SECONDS_PER_TARGET} s"
    START=$(date +%s)
    LD_LIBRARY_PATH="${LIB_DIR}" LSAN_OPTIONS="${TARGET_LSAN_OPTIONS}" "${BIN}" \
        -max_total_time="${SECONDS_PER_TARGET}" -rss_limit_mb=2048 -timeout=10 -print_final_stats=1 \
        -artifact_prefix="${ARTIFACTS}/" "${EXTRA[@]}" "${CORPUS}" >"${LOG}" 2>&1
    RC=$?
    END=$(date +%s)

    EXECS=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "${LOG}" | tail -1 | grep -o '[0-9]*$')
    FOUND=$(find "${ARTIFACTS}" -type f | wc -l)
    STATUS="ok"
    if [ "${RC}" -ne 0 ] || [ "${FOUND}" -ne 0 ]; then
        STATUS="FAILED (exit ${RC}, ${FOUND} artifact(s) in ${ARTIFACTS})"
        grep -E 'ERROR: |SUMMARY: |runtime error|mismatch|Test unit written' "${LOG}" | head -20
        echo "   log: ${LOG}"
    fi
    printf '%-22s %10s execs %5s s  corpus %5s  %s' "${TARGET}" "${EXECS:-?}" "$((END - START))" \
        "$(find "${CORPUS}" -type f | wc -l)" "${STATUS}" >"${RESULT_DIR}/${TARGET}"
}

for TARGET in ${TARGETS}; do
    while [ "$(jobs -rp | wc -l)" -ge "${JOBS}" ]; do
        wait -n
    done
    run_target "${TARGET}" &
done
wait

declare -a SUMMARY
FAILED=0
for TARGET in ${TARGETS}; do
    if [ -s "${RESULT_DIR}/${TARGET}" ]; then
        LINE="$(cat "${RESULT_DIR}/${TARGET}")"
    else
        LINE="$(printf '%-22s no result' "${TARGET}")"
    fi
    case "${LINE}" in
    *" ok") ;;
    *) FAILED=1 ;;
    esac
    SUMMARY+=("${LINE}")
done

echo
echo "== summary (work folder ${WORK_DIR})"
for LINE in "${SUMMARY[@]}"; do
    echo "${LINE}"
done

if [ "${FAILED}" -ne 0 ]; then
    exit 1
fi
if [ -z "${WGT_FUZZ_WORK_DIR:-}" ]; then
    rm -rf "${WORK_DIR}"
fi
exit 0
