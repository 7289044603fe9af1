#!/usr/bin/env bash
# Installs everything Ravelinth needs to build, run and test on Debian 12.
# Safe to run again: apt-get skips what is already there.
set -euo pipefail

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi

PACKAGES=(
    cmake ninja-build g++ pkg-config
    qt6-base-dev qt6-declarative-dev qt6-declarative-dev-tools libglib2.0-dev libicu-dev
    qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
    qml6-module-qtquick qml6-module-qtquick-controls qml6-module-qtquick-templates
    qml6-module-qtquick-layouts qml6-module-qtquick-window qml6-module-qtquick-shapes
    qml6-module-qtquick-dialogs qml6-module-qt-labs-folderlistmodel qml6-module-qt-labs-settings
    qml6-module-qt-labs-qmlmodels
    qml6-module-qttest libqt6quicktest6 libqt6svg6
    fonts-material-design-icons-iconfont fonts-noto-color-emoji fonts-dejavu-core
    xvfb xauth dbus libglib2.0-bin trash-cli e2fsprogs util-linux xdotool
    clang libclang-rt-14-dev ccache
    librsvg2-bin desktop-file-utils appstream lintian dpkg-dev file
    at-spi2-core python3-pyatspi gir1.2-atspi-2.0
)

missing=()
for p in "${PACKAGES[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ "${#missing[@]}" -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    $SUDO apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y --no-install-recommends "${missing[@]}"
fi
