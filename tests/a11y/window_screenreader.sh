#!/usr/bin/env bash
# The window as a screen reader meets it: starts `ravelinth` on a virtual X server with its own
# session bus and accessibility bus, and hands it to atspi_walk.py, which scans a small folder
# through the accessibility interfaces alone and checks what they expose.
#
#   window_screenreader.sh path/to/ravelinth [--report-only]
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
# The distribution's interpreter: pyatspi comes as a Debian package, not from a private one.
python=/usr/bin/python3
[ -x "$python" ] || python=python3

if [ "${1:-}" = "--inside-bus" ]; then
    # Inside the private session bus: the accessibility bus, the window, the walker.
    shift
    exe=$1 work=$2
    shift 2
    /usr/libexec/at-spi-bus-launcher --launch-immediately >"$work/atspi.log" 2>&1 &
    launcher=$!
    env HOME="$work/home" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" \
        XDG_CACHE_HOME="$work/cache" XDG_RUNTIME_DIR="$work/runtime" QT_QPA_PLATFORM=xcb \
        QT_ACCESSIBILITY=1 QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 "$exe" >"$work/app.log" 2>&1 &
    app=$!
    status=0
    "$python" "$here/atspi_walk.py" "$work/to scan" 2 "$@" || status=$?
    kill "$app" 2>/dev/null || true
    wait "$app" 2>/dev/null || true
    kill "$launcher" 2>/dev/null || true
    wait "$launcher" 2>/dev/null || true
    exit "$status"
fi

exe=$(realpath "$1")
shift
for tool in Xvfb xdotool dbus-run-session "$python" /usr/libexec/at-spi-bus-launcher; do
    command -v "$tool" >/dev/null || { echo "missing $tool (scripts/install-deps.sh)"; exit 1; }
done
"$python" -c 'import pyatspi' 2>/dev/null || { echo "missing python3-pyatspi (scripts/install-deps.sh)"; exit 1; }

work=$(mktemp -d "${TMPDIR:-/tmp}/ravelinth-a11y.XXXXXX")
xvfb_pid=""
cleanup() {
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    wait 2>/dev/null || true
    [ -n "${RAVELINTH_KEEP_WORK:-}" ] || rm -rf "$work"
}
trap cleanup EXIT

# Under AddressSanitizer the window is slow enough with full-stack leak bookkeeping that the
# walker's waits run out; memory errors are still caught, leaks by the in-process view tests.
if [ -n "${ASAN_OPTIONS:-}" ]; then
    export ASAN_OPTIONS="$ASAN_OPTIONS:fast_unwind_on_malloc=1:detect_leaks=0"
fi

mkdir -p "$work/home" "$work/config/Ravelinth" "$work/data" "$work/cache" "$work/runtime"
chmod 700 "$work/runtime"
printf '[General]\nhasSeenOnboarding=true\n' >"$work/config/Ravelinth/Ravelinth.conf"

# Two files above the 100 MB threshold (sparse: they cost no disk space) and one below.
scan="$work/to scan"
mkdir -p "$scan/films"
truncate -s 150M "$scan/films/holiday.mp4"
truncate -s 300M "$scan/disk image.iso"
truncate -s 50M "$scan/films/trailer.mp4"

# run_once: a fresh X server and session, the window and the walker. The walker answers 3 when
# the window never reached the accessibility bus (an X server lost at start on a busy machine);
# that alone is tried once more.
run_once() {
    rm -f "$work/display"
    exec 3>"$work/display"
    Xvfb -displayfd 3 -screen 0 1400x900x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
    xvfb_pid=$!
    exec 3>&-
    for _ in $(seq 100); do [ -s "$work/display" ] && break; sleep 0.1; done
    [ -s "$work/display" ] || { echo "FAIL: Xvfb did not start"; return 1; }
    export DISPLAY=":$(head -n1 "$work/display")"
    # The server answers before anything connects to it.
    for _ in $(seq 50); do xdotool getdisplaygeometry >/dev/null 2>&1 && break; sleep 0.1; done
    local status=0
    timeout 100 dbus-run-session -- "$0" --inside-bus "$exe" "$work" "$@" || status=$?
    kill "$xvfb_pid" 2>/dev/null || true
    wait "$xvfb_pid" 2>/dev/null || true
    xvfb_pid=""
    return "$status"
}

status=0
run_once "$@" || status=$?
if [ "$status" -eq 3 ]; then
    echo "--- the window never reached the bus; once more"
    cat "$work/app.log" 2>/dev/null || true
    status=0
    run_once "$@" || status=$?
fi
if [ "$status" -ne 0 ]; then
    echo "--- application output"
    cat "$work/app.log" 2>/dev/null || true
fi
exit "$status"
