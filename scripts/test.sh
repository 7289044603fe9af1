#!/usr/bin/env bash
# Installs dependencies, builds, and runs every test.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
cd "${BUILD_DIR:-build}"
ctest --output-on-failure --timeout 600 -j2
