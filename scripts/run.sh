#!/usr/bin/env bash
# Installs dependencies, builds, and starts Ravelinth (arguments are passed on).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
exec ./build/bin/ravelinth "$@"
