#pragma once

#include "models/FileItem.h"
#include "services/TrashService.h"

#include <QList>
#include <QSet>
#include <QString>
#include <QVariantList>

namespace ravelinth {

// What one batch move to the Trash came to: the paths that left, and for each file that stayed
// the name the list shows, its path and the platform's reason. Failures are told to the user
// here instead of being dropped, so a file that is still listed after a move never goes
// unexplained.
struct TrashReport {
    struct Failure {
        QString name;
        QString path;
        QString reason;
    };

    QSet<QByteArray> movedPaths;
    QList<Failure> failures;

    // `results` answers `files` one for one, in the same order.
    static TrashReport make(const QList<FileItem> &files, const QList<TrashResult> &results);

    int movedCount() const { return int(movedPaths.size()); }
    // One {name, path, reason} map per failure, for the notice's list.
    QVariantList failureList() const;
};

} // namespace ravelinth
