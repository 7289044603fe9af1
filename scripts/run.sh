#!/usr/bin/env bash
# Installs dependencies, builds, and starts Ravelinth. Arguments are passed on; with none, the
# window opens.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
exec ./build/bin/ravelinth "$@"
