#pragma once

#include <QByteArray>
#include <QList>

namespace ravelinth::cli {

inline constexpr int exitSuccess = 0;
inline constexpr int exitFailure = 1;
inline constexpr int exitUsage = 2;

// Each command gets the arguments after its own name, as the exact bytes of argv, and runs
// inside a QCoreApplication.
int runScanCommand(const QList<QByteArray> &arguments);
int runDiskCommand(const QList<QByteArray> &arguments);
int runTrashCommand(const QList<QByteArray> &arguments);
int runRevealCommand(const QList<QByteArray> &arguments);
int runRestoreCommand(const QList<QByteArray> &arguments);

} // namespace ravelinth::cli
