#!/usr/bin/env bash
# Configures and builds Ravelinth into ./build (or $BUILD_DIR).
set -euo pipefail
cd "$(dirname "$0")/.."
case ${1:-} in
-h | --help)
    sed -n '2,2s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
esac
BUILD_DIR=${BUILD_DIR:-build}
cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} "$@" >/dev/null
cmake --build "$BUILD_DIR"
