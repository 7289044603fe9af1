#!/usr/bin/env bash
# Installs dependencies, builds, and starts Ravelinth. Arguments are passed on; with none, and
# until the window is complete, it scans the home folder from the command line.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
if [[ $# -eq 0 ]]; then
    set -- scan "$HOME"
fi
exec ./build/bin/ravelinth "$@"
