#pragma once

#include <QString>
#include <QStringList>

namespace ravelinth::platform {

// The user's home folder, read afresh on each call.
QString homeDirectory();
QString downloadsDirectory();
QString desktopDirectory();
QString documentsDirectory();
// Where installed programs live: "/Applications" on macOS, "/usr" on Linux.
QString applicationsDirectory();
// The per-user data folder: ~/Library on macOS, $XDG_DATA_HOME (or ~/.local/share) on Linux.
QString libraryDirectory();

// The folders a desktop makes for the user's own kinds of files (desktop, documents, downloads,
// music, pictures, videos, templates, public share), each as the system names it.
QStringList standardUserFolders();

// The user's own trash folder: ~/.Trash on macOS, $XDG_DATA_HOME/Trash on Linux.
QString homeTrashDirectory();

// Where the program keeps what it must remember between runs but is no setting (the journal of
// its moves): ~/Library/Application Support/Ravelinth on macOS, $XDG_STATE_HOME/ravelinth (or
// ~/.local/state/ravelinth) on Linux.
QString programStateDirectory();

} // namespace ravelinth::platform
