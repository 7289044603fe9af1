#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace ravelinth::platform {

// file:// addresses for exact byte paths, made absolute first: every byte outside the unreserved
// set is percent-encoded, so names that are not UTF-8 survive the trip.
QStringList fileUris(const QList<QByteArray> &paths);

// Opens a folder in the desktop's default file browser without waiting for it.
void openFolder(const QByteArray &path);

// Opens a file with the application the desktop associates with it, without waiting.
void openFile(const QByteArray &path);

// Replaces the clipboard's contents with plain text. Does nothing without a GUI application.
void copyTextToClipboard(const QString &text);

} // namespace ravelinth::platform
