#pragma once

#include <QByteArrayView>

#include <functional>

namespace ravelinth {

// The names (and, on Linux, trash folders) that a scan never walks into.
std::function<bool(QByteArrayView path, QByteArrayView name)>
makeScanPruning(bool skipSystemDirectories);

} // namespace ravelinth
