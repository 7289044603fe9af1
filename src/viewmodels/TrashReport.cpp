#include "viewmodels/TrashReport.h"

#include "models/DisplayText.h"

#include <QVariantMap>

namespace ravelinth {

TrashReport TrashReport::make(const QList<FileItem> &files, const QList<TrashResult> &results) {
    TrashReport report;
    for (qsizetype i = 0; i < results.size(); ++i) {
        if (const auto *success = std::get_if<TrashSuccess>(&results[i])) {
            report.movedPaths.insert(success->originalPath);
            continue;
        }
        const TrashFailure &failure = std::get<TrashFailure>(results[i]);
        // The service answers in input order, so the file is at the same index; the name
        // comes from the file rather than the path so that it reads as the list shows it.
        const QString name = i < files.size() ? files[i].displayName()
                                              : displayText(lastPathComponent(failure.path));
        report.failures.append({name, displayText(failure.path), failure.reason});
    }
    return report;
}

QVariantList TrashReport::failureList() const {
    QVariantList list;
    list.reserve(failures.size());
    for (const Failure &failure : failures) {
        list.append(QVariantMap{{u"name"_qs, failure.name},
                                {u"path"_qs, failure.path},
                                {u"reason"_qs, failure.reason}});
    }
    return list;
}

} // namespace ravelinth
