#!/usr/bin/env bash
# Installs dependencies, builds and runs the test stages; with no arguments, all of them (what CI
# runs). Name stages to run only those, e.g. `scripts/test.sh normal`.
#   normal  the usual build in ./build and every test
#   package the Debian package from ./build: validated, linted, installed, run, purged
#   asan    AddressSanitizer + UndefinedBehaviorSanitizer build in ./build-asan and every test
#   tsan    ThreadSanitizer build in ./build-tsan, the scanner and view-model tests
#   fuzz    clang libFuzzer targets in ./build-fuzz, FUZZ_SECONDS (default 60) each
# A sanitizer report fails the test that caused it. Suppressions (third-party code only) are in
# tests/sanitizers/.
set -euo pipefail
cd "$(dirname "$0")/.."
SOURCE_DIR=$PWD

case ${1:-} in
-h | --help)
    sed -n '2,10s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
esac

stages=("$@")
if [ "${#stages[@]}" -eq 0 ]; then
    stages=(normal package asan tsan fuzz)
fi

scripts/install-deps.sh

launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

configure() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" "$@" >/dev/null
}

stage_normal() {
    configure "${BUILD_DIR:-build}"
    cmake --build "${BUILD_DIR:-build}"
    (cd "${BUILD_DIR:-build}" && ctest --output-on-failure --timeout 600 -j2)
}

stage_asan() {
    configure build-asan -DRAVELINTH_SANITIZE=address,undefined -DRAVELINTH_BENCH=OFF
    cmake --build build-asan
    # Full stacks for leaks: the fast unwinder stops inside system libraries built without
    # frame pointers, and suppressions need the frames that name the leaking function.
    # intercept_strndup=0: libxkbcommon-x11 (the window under Xvfb) hands strndup X11 atom
    # names that are not NUL-terminated, which the interceptor reads past although strndup
    # itself stops at the length it is given.
    (cd build-asan &&
        ASAN_OPTIONS=detect_leaks=1:detect_stack_use_after_return=1:strict_string_checks=1:fast_unwind_on_malloc=0:intercept_strndup=0 \
        LSAN_OPTIONS=suppressions=$SOURCE_DIR/tests/sanitizers/lsan.supp:print_suppressions=0 \
        UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        ctest --output-on-failure --timeout 900 -j2)
}

tsan_tests='^(services\.(scanner|parallelscan|hostiletrees|systemtrees|filelistquery)|viewmodels\.(viewmodel|fileoperations|models))$'
stage_tsan() {
    configure build-tsan -DRAVELINTH_SANITIZE=thread
    # Only what the chosen tests need: the test programs and the command line they start.
    cmake --build build-tsan --target ravelinth tst_services_scanner tst_services_parallelscan \
        tst_services_hostiletrees tst_services_systemtrees tst_viewmodels_viewmodel tst_viewmodels_fileoperations tst_viewmodels_models \
        tst_services_filelistquery
    # setarch -R: ThreadSanitizer's fixed memory layout breaks under the larger address-space
    # randomisation of newer kernels.
    (cd build-tsan &&
        setarch "$(uname -m)" -R env \
        TSAN_OPTIONS=suppressions=$SOURCE_DIR/tests/sanitizers/tsan.supp:halt_on_error=1:second_deadlock_stack=1:die_after_fork=0 \
        ctest --output-on-failure --timeout 900 -j2 -R "$tsan_tests")
}

stage_package() {
    scripts/package-check.sh
}

stage_fuzz() {
    scripts/fuzz.sh "${launcher[@]}"
}

summary=()
for stage in "${stages[@]}"; do
    case $stage in
    normal | package | asan | tsan | fuzz) ;;
    *)
        echo "unknown stage '$stage' (normal, package, asan, tsan, fuzz)" >&2
        exit 2
        ;;
    esac
    echo "=== stage $stage"
    started=$SECONDS
    "stage_$stage"
    summary+=("$stage: $((SECONDS - started)) s")
done
echo "=== all stages passed: ${summary[*]}"
