#!/usr/bin/env bash
# Builds the Debian package in ./build (or $BUILD_DIR), validates its desktop entry and
# store listing, lints it, installs it with apt-get, runs the installed program (version, a scan
# of a small tree, the window offscreen with its QML from the system's modules) and purges it.
# Needs root (or sudo) for apt-get. The test stage `package` of scripts/test.sh runs this.
set -euo pipefail
cd "$(dirname "$0")/.."

case ${1:-} in
-h | --help)
    sed -n '2,5s/^# \{0,1\}//p' "$0"
    exit 0
    ;;
esac

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi
dir=${BUILD_DIR:-build}
launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo "${launcher[@]}" >/dev/null
cmake --build "$dir" --target ravelinth ravelinth_icons ravelinth_docs
rm -f "$dir"/ravelinth_*.deb
(cd "$dir" && cpack -G DEB >/dev/null)
deb=$(realpath "$dir"/ravelinth_*.deb)
echo "--- built $(basename "$deb")"
dpkg-deb --field "$deb" Version Depends | sed 's/^/    /'

echo "--- desktop-file-validate"
desktop-file-validate data/io.github.ravelinth.Ravelinth.desktop
echo "--- appstreamcli validate --no-net"
appstreamcli validate --no-net --pedantic "$dir"/data/io.github.ravelinth.Ravelinth.metainfo.xml
echo "--- lintian"
# Errors fail the stage; warnings are shown. lintian refuses to run as root without this.
lintian --allow-root --fail-on error --tag-display-limit 0 "$deb"

tree=$(mktemp -d)
cleanup() {
    rm -rf "$tree"
    if dpkg-query -W -f='${Status}' ravelinth 2>/dev/null | grep -q "install ok installed"; then
        DEBIAN_FRONTEND=noninteractive $SUDO apt-get purge -y -qq ravelinth >/dev/null
    fi
}
trap cleanup EXIT

echo "--- apt-get install $(basename "$deb")"
# Without the recommended packages: what Depends names must be enough to run, and nothing but
# the package itself is left to purge afterwards.
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "$deb" >/dev/null
test "$(command -v ravelinth)" = /usr/bin/ravelinth

echo "--- installed ravelinth --version"
version=$(ravelinth --version)
echo "    $version"
expected=$(dpkg-query -W -f='${Version}' ravelinth)
test "$version" = "ravelinth $expected"

echo "--- installed ravelinth scan"
mkdir -p "$tree/a/b"
truncate -s 150M "$tree/a/b/big one.iso"
truncate -s 10M "$tree/a/small.txt"
listed=$(ravelinth scan "$tree" --print0 | xargs -0 -n1 echo)
echo "    $listed"
test "$listed" = "$tree/a/b/big one.iso"

echo "--- installed window, offscreen"
# The tutorial is skipped so that the picture shows the main window; the trace lists every
# QML module the engine loaded and where from.
mkdir -p "$tree/config/Ravelinth"
printf '[General]\nhasSeenOnboarding=true\n' >"$tree/config/Ravelinth/Ravelinth.conf"
XDG_CONFIG_HOME=$tree/config QT_QPA_PLATFORM=offscreen QML_IMPORT_TRACE=1 \
    RAVELINTH_SCREENSHOT="$tree/window.png" RAVELINTH_SCREENSHOT_DELAY=3000 \
    timeout 60 ravelinth >"$tree/window.log" 2>&1 || {
    cat "$tree/window.log"
    exit 1
}
test -s "$tree/window.png"
qml_root=$(dpkg -L qml6-module-qtquick-controls | sed -n 's,/QtQuick/Controls/qmldir$,,p')
for module in QtQuick/Controls QtQuick/Layouts QtQuick/Dialogs Qt/labs/qmlmodels; do
    if ! grep -q "qmldir found at \"$qml_root/$module/qmldir\"" "$tree/window.log"; then
        echo "the window did not load $module from the system's QML modules" >&2
        exit 1
    fi
done
echo "    window drawn ($(wc -c <"$tree/window.png") bytes of PNG); its QML imports came from $qml_root"

# What the window loaded by name at run time must come with the package's Depends: every QML
# module's package, and the package of each font the views name.
closure=$(apt-cache depends --recurse --installed --no-recommends --no-suggests --no-conflicts \
    --no-breaks --no-replaces --no-enhances ravelinth | grep -v '^ ' | sort -u)
loaded=$(grep -o 'qmldir found at "[^"]*"' "$tree/window.log" | sed 's/.*"\(.*\)"/\1/' | sort -u)
fonts=$(for family in "Material Icons" "DejaVu Sans Mono" "Noto Color Emoji"; do
    fc-match -f '%{file}\n' "$family"
done)
for owner in $(printf '%s\n' "$loaded" "$fonts" | xargs dpkg -S | cut -d: -f1 | sort -u); do
    if ! grep -qx "$owner" <<<"$closure"; then
        echo "the window loads files of $owner, which the package does not depend on" >&2
        exit 1
    fi
done
echo "    its QML modules and fonts come from packages it depends on"

echo "--- installed files"
for path in /usr/share/applications/io.github.ravelinth.Ravelinth.desktop \
    /usr/share/metainfo/io.github.ravelinth.Ravelinth.metainfo.xml \
    /usr/share/icons/hicolor/scalable/apps/io.github.ravelinth.Ravelinth.svg \
    /usr/share/icons/hicolor/512x512/apps/io.github.ravelinth.Ravelinth.png \
    /usr/share/man/man1/ravelinth.1.gz \
    /usr/share/bash-completion/completions/ravelinth \
    /usr/share/zsh/vendor-completions/_ravelinth \
    /usr/share/fish/vendor_completions.d/ravelinth.fish; do
    test -s "$path" || {
        echo "missing: $path" >&2
        exit 1
    }
done
desktop-file-validate /usr/share/applications/io.github.ravelinth.Ravelinth.desktop
appstreamcli validate --no-net /usr/share/metainfo/io.github.ravelinth.Ravelinth.metainfo.xml

echo "--- apt-get purge ravelinth"
DEBIAN_FRONTEND=noninteractive $SUDO apt-get purge -y -qq ravelinth >/dev/null
if command -v ravelinth >/dev/null; then
    echo "ravelinth is still on the path after the purge" >&2
    exit 1
fi
echo "--- package checks passed"
