#pragma once

#include "viewmodels/RavelinthViewModel.h"

#include <QFile>
#include <QTest>

// What the view-model tests share: a model that has scanned a real folder, and its files' ids.
namespace ravelinth::test {

inline constexpr qint64 MiB = 1024 * 1024;

// Scans `root` for files of `megabytes` or more; false when the scan did not complete.
[[nodiscard]] inline bool scanned(RavelinthViewModel &model, const QByteArray &root,
                                  double megabytes = 1) {
    model.setScanPath(QFile::decodeName(root));
    model.setMinFileSizeMB(megabytes);
    model.startScan();
    return QTest::qWaitFor([&] { return model.scanState().isCompleted(); }, 10000);
}

// The ids of the listed files at `paths`, in the order of `paths`.
inline QStringList idsOf(const RavelinthViewModel &model, const QList<QByteArray> &paths) {
    QStringList ids;
    for (const QByteArray &path : paths) {
        for (const FileItem &file : model.files()) {
            if (file.path == path)
                ids.append(file.id.toString(QUuid::WithoutBraces));
        }
    }
    return ids;
}

} // namespace ravelinth::test
