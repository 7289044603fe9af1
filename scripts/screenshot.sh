#!/usr/bin/env bash
# Renders the main window after a scan of a demo tree to docs/screenshot.png, offscreen, so the
# picture in the README is the program's own and can be made again after any change to a view.
#   scripts/screenshot.sh [OUTPUT.png]
# Uses build/bin/ravelinth (built first) or $RAVELINTH. The demo files are sparse: they cost no
# disk space, whatever size they claim.
set -euo pipefail
cd "$(dirname "$0")/.."

case ${1:-} in
-h | --help)
    sed -n '2,6s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
esac
output=$(realpath -m "${1:-docs/screenshot.png}")

if [ -z "${RAVELINTH:-}" ]; then
    [ -f build/build.ninja ] || cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
    cmake --build build --target ravelinth >/dev/null
    RAVELINTH=$PWD/build/bin/ravelinth
fi

# The demo sits in the home folder under a plain name: a temporary folder's path would put every
# file in the Cache category, and the random part of its name would show in the picture.
demo=$HOME/Ravelinth\ Demo
if [ -e "$demo" ]; then
    echo "$demo exists; move it away first" >&2
    exit 1
fi
work=$(mktemp -d)
trap 'rm -rf "$work" "$demo"' EXIT
mkdir -p "$demo"/{Downloads,Videos/Holiday,Music,Projects/app/build,Pictures,.cache/browser,VMs}
sparse() {
    truncate -s "$2" "$demo/$1"
    touch -d "$3" "$demo/$1"
}
sparse Downloads/debian-12.8.0-amd64-DVD-1.iso 3900M "3 days ago"
sparse Downloads/dataset-export-2024.zip 1450M "2 weeks ago"
sparse Downloads/installer-setup.deb 180M "5 hours ago"
sparse Videos/Holiday/beach-4k.mp4 2300M "4 months ago"
sparse Videos/Holiday/sunset.mov 860M "4 months ago"
sparse Videos/lecture-recording.mkv 1200M "6 weeks ago"
sparse Music/concert-live.flac 420M "1 year ago"
sparse Projects/app/build/libcore.a 240M "2 days ago"
sparse Projects/app/assets.tar.gz 610M "3 months ago"
sparse Pictures/panorama-raw.tiff 310M "8 months ago"
sparse .cache/browser/cache-data.bin 530M "1 day ago"
sparse VMs/test-machine.qcow2 6400M "1 month ago"
sparse Projects/report-final.pdf 150M "10 days ago"

# A settings folder of its own: no tutorial over the window, and the user's own settings untouched.
mkdir -p "$work/config/Ravelinth"
printf '[General]\nhasSeenOnboarding=true\n' >"$work/config/Ravelinth/Ravelinth.conf"

mkdir -p "$(dirname "$output")"
XDG_CONFIG_HOME=$work/config QT_QPA_PLATFORM=offscreen LANG=C.UTF-8 \
    RAVELINTH_SCREENSHOT="$output" RAVELINTH_SCREENSHOT_SCAN="$demo" \
    RAVELINTH_SCREENSHOT_DELAY=${RAVELINTH_SCREENSHOT_DELAY:-4000} "$RAVELINTH"
echo "wrote $output"
