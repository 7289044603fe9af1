#!/usr/bin/env bash
# Builds the libFuzzer targets with clang into ./build-fuzz (or $FUZZ_BUILD_DIR) and runs each
# for FUZZ_SECONDS (default 60) from its seed corpus in tests/fuzz/corpus/<name>. New inputs go
# to the build folder; the seeds in the repository are only read. A crash leaves its input in
# build-fuzz/fuzz/ and fails the script.
set -euo pipefail
cd "$(dirname "$0")/.."
case ${1:-} in
-h | --help)
    sed -n '2,5s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
esac
SOURCE_DIR=$PWD
BUILD_DIR=${FUZZ_BUILD_DIR:-build-fuzz}
SECONDS_EACH=${FUZZ_SECONDS:-60}
TARGETS=(systemprofiler findmnt bytecount)

CC=clang CXX=clang++ cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DRAVELINTH_FUZZ=ON "$@" >/dev/null
cmake --build "$BUILD_DIR" --target "${TARGETS[@]/#/fuzz_}"

status=0
for name in "${TARGETS[@]}"; do
    work="$BUILD_DIR/fuzz/corpus-$name"
    mkdir -p "$work"
    echo "== fuzz_$name for ${SECONDS_EACH}s"
    if ! (cd "$BUILD_DIR/fuzz" && ./"fuzz_$name" -max_total_time="$SECONDS_EACH" -timeout=10 \
            -rss_limit_mb=2048 -print_final_stats=1 "corpus-$name" \
            "$SOURCE_DIR/tests/fuzz/corpus/$name" 2>"fuzz_$name.log"); then
        status=1
    fi
    grep -E "stat::number_of_executed_units|stat::new_units_added|ERROR|SUMMARY|fuzz check failed" \
        "$BUILD_DIR/fuzz/fuzz_$name.log" || true
done
exit $status
