# `cd build && cpack -G DEB`, after a build, makes ravelinth_<version>_<arch>.deb from the
# install rules.
set(CPACK_PACKAGE_NAME ravelinth)
set(CPACK_PACKAGE_VENDOR "The Ravelinth developers")
set(CPACK_PACKAGE_CONTACT "The Ravelinth developers <ravelinth@users.noreply.github.com>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "find the large files filling a disk and trash them")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://github.com/ravelinth/ravelinth")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# cpack installs what the package holds without building every test first.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# CPack puts the summary above this as the synopsis, indents the rest and writes the blank line
# as " .".
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Ravelinth walks a folder in the background and keeps every file above a size
you choose, sorted into categories such as installers, archives, videos and
caches. It marks the files that are safe to delete, shows how full the disk
is, and moves the files you pick to the freedesktop Trash, never deleting
anything outright.

The ravelinth command lists large files (as a table, JSON or NUL-separated
paths), shows the disk's figures and moves paths to the Trash from scripts.")
# Libraries the binary links come from dpkg-shlibdeps; what the engine loads by name at run time
# does not show there: the QML modules the views import (Dialogs needs the folder-list model
# without depending on it), the SVG engine for the window icon, and the fonts the views name.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qml6-module-qtqml, qml6-module-qtqml-models, qml6-module-qtqml-workerscript, \
qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-templates, \
qml6-module-qtquick-layouts, qml6-module-qtquick-window, qml6-module-qtquick-dialogs, \
qml6-module-qt-labs-folderlistmodel, qml6-module-qt-labs-qmlmodels, libqt6svg6, \
fonts-material-design-icons-iconfont, fonts-dejavu-core, fonts-noto-color-emoji")
# Without these the program still works: the window runs through XWayland instead of natively
# and without the desktop's portal theme, and `reveal` finds no folder opener when no file
# manager answers over D-Bus.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, qt6-qpa-plugins, xdg-utils")

include(CPack)
