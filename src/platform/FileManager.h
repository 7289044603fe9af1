#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace ravelinth::platform {

// file:// addresses for exact byte paths: every byte outside the unreserved set is
// percent-encoded, so names that are not UTF-8 survive the trip.
QStringList fileUris(const QList<QByteArray> &paths);

// Opens a folder in the desktop's default file browser without waiting for it.
void openFolder(const QByteArray &path);

} // namespace ravelinth::platform
