#!/usr/bin/env bash
# End to end through the real window: starts `ravelinth` on a virtual X server, types a prepared
# folder into the path field, starts the scan from the toolbar, selects every listed file with
# Ctrl+A (while the path field has focus) and moves them to the Trash with the toolbar. The
# files above the threshold must end up in the Trash, the small ones stay, and Ctrl+Q quits.
#
#   window_scan_and_trash.sh path/to/ravelinth
#
# Every wait is a bounded poll; nothing relies on a fixed delay being long enough.
set -euo pipefail

exe=$(realpath "$1")
for tool in Xvfb xdotool dbus-run-session; do
    command -v "$tool" >/dev/null || { echo "missing $tool (scripts/install-deps.sh)"; exit 1; }
done

work=$(mktemp -d "${TMPDIR:-/tmp}/ravelinth-e2e.XXXXXX")
xvfb_pid=""
app_pid=""
cleanup() {
    # Taking the X server away ends the application; dbus-run-session then stops its own bus
    # daemon, which killing dbus-run-session directly would leave behind.
    [ -n "$xvfb_pid" ] && kill "$xvfb_pid" 2>/dev/null || true
    if [ -n "$app_pid" ]; then
        for _ in $(seq 50); do kill -0 "$app_pid" 2>/dev/null || break; sleep 0.1; done
        kill "$app_pid" 2>/dev/null || true
    fi
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap cleanup EXIT

fail() {
    echo "FAIL: $*"
    [ -f "$work/app.log" ] && { echo "--- application output"; cat "$work/app.log"; }
    exit 1
}

# poll SECONDS COMMAND...: runs COMMAND every 0.1 s until it succeeds or time runs out.
poll() {
    local deadline=$((SECONDS + $1))
    shift
    until "$@"; do
        [ "$SECONDS" -ge "$deadline" ] && return 1
        sleep 0.1
    done
}

# A home of its own: preferences, trash and caches never touch the real user's.
mkdir -p "$work/home" "$work/config/Ravelinth" "$work/data" "$work/cache" "$work/runtime"
chmod 700 "$work/runtime"
# The toolbar moves at once: the loop below clicks Trash before the list has filled, and the
# question asked before a move is driven in tests/views/tst_trash.qml.
printf '[General]\nhasSeenOnboarding=true\nconfirmBeforeDelete=false\n' \
    >"$work/config/Ravelinth/Ravelinth.conf"

# The folder to scan: two large sparse files (they cost no disk space) and two below 100 MB.
scan="$work/to scan"
mkdir -p "$scan/films" "$scan/notes"
truncate -s 150M "$scan/films/holiday.mp4"
truncate -s 300M "$scan/disk image.iso"
truncate -s 50M "$scan/films/trailer.mp4"
echo "a small note" >"$scan/notes/readme.txt"

# The X server picks a free display and tells us which.
exec 3>"$work/display"
Xvfb -displayfd 3 -screen 0 1400x900x24 -nolisten tcp >"$work/xvfb.log" 2>&1 &
xvfb_pid=$!
exec 3>&-
poll 10 test -s "$work/display" || fail "Xvfb did not start"
export DISPLAY=":$(head -n1 "$work/display")"

# Under AddressSanitizer, full-stack leak bookkeeping on every allocation makes the window too
# slow to drive; memory errors are still caught here, leaks by the view tests that load the
# same views in-process.
if [ -n "${ASAN_OPTIONS:-}" ]; then
    export ASAN_OPTIONS="$ASAN_OPTIONS:fast_unwind_on_malloc=1:detect_leaks=0"
fi

env HOME="$work/home" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" \
    XDG_CACHE_HOME="$work/cache" XDG_STATE_HOME="$work/state" XDG_RUNTIME_DIR="$work/runtime" QT_QPA_PLATFORM=xcb \
    dbus-run-session -- "$exe" >"$work/app.log" 2>&1 &
app_pid=$!

find_window() { window=$(xdotool search --onlyvisible --name '^Ravelinth$' 2>/dev/null | head -n1); [ -n "$window" ]; }
poll 20 find_window || fail "the window did not appear"
# With no window manager the window must be given the keyboard itself.
poll 10 xdotool windowfocus --sync "$window" || fail "could not focus the window"


# The path field has the keyboard when the window opens: replace its text with the folder.
xdotool key --clearmodifiers Home shift+End
xdotool type --delay 5 "$scan"

# The toolbar sits under the menu bar at the window's top left; its buttons are 88 px wide,
# 4 px apart, with a divider (6 + 1 + 6 px) after the first: Scan, Reveal, Trash, Refresh.
menu_height=26
toolbar_middle=$((menu_height + 24))
scan_x=52
trash_x=253
click() { xdotool mousemove --window "$window" "$1" "$2" click 1; }

click "$scan_x" "$toolbar_middle"

# Until the scan is done the list is empty and Ctrl+A + Trash moves nothing, so repeat both
# until the large files have left the folder.
trashed() { [ ! -e "$scan/films/holiday.mp4" ] && [ ! -e "$scan/disk image.iso" ]; }
select_and_trash() {
    xdotool key --clearmodifiers ctrl+a
    click "$trash_x" "$toolbar_middle"
    poll 1 trashed
}
poll 30 select_and_trash || fail "the large files were not moved to the Trash"

# In the Trash, with their origins recorded; the small files are where they were.
[ -f "$work/data/Trash/files/holiday.mp4" ] || fail "holiday.mp4 is not in the Trash"
[ -f "$work/data/Trash/files/disk image.iso" ] || fail "'disk image.iso' is not in the Trash"
grep -q "^Path=.*/films/holiday.mp4$" "$work/data/Trash/info/holiday.mp4.trashinfo" ||
    fail "holiday.mp4 has no trash record of where it came from"
[ -f "$scan/films/trailer.mp4" ] || fail "a file below the threshold was trashed"
[ -f "$scan/notes/readme.txt" ] || fail "a small file was trashed"
[ "$(ls "$work/data/Trash/files" | wc -l)" -eq 2 ] || fail "unexpected files in the Trash"

# Ctrl+Q quits.
xdotool key --clearmodifiers ctrl+q
exited() { ! kill -0 "$app_pid" 2>/dev/null; }
poll 10 exited || fail "Ctrl+Q did not quit"
wait "$app_pid" || fail "the application exited with an error"
app_pid=""
echo "PASS"
