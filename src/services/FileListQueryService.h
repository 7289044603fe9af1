#pragma once

#include "models/FileItem.h"
#include "models/FileTotals.h"
#include "services/FileListQuery.h"
#include "utility/SerialQueue.h"

#include <QFuture>
#include <QList>

#include <atomic>
#include <memory>
#include <optional>

namespace ravelinth {

using SharedOrders = std::shared_ptr<const FileListOrders>;

// The work behind the file list, off the main thread: each list's orders worked out once (sizes
// and dates on one thread, the names' collation, which is slower, on another), and the queries that
// filter and order the list, one at a time. A query that needs the name order waits for it there
// instead of doing the same work again.
class FileListQueryService {
public:
    struct Preparation {
        QFuture<SharedOrders> baseOrders;  // sizes and dates
        QFuture<SharedOrders> namedOrders; // the same plus names
        QFuture<FileTotals> totals;        // finishes without a result unless asked for
    };

    FileListQueryService() = default;
    ~FileListQueryService();

    Preparation prepare(const QList<FileItem> &files, bool sumTotals);

    // The rows of `files` that `query` keeps, in its order, as indices. Skipped (no result)
    // when `latest` has moved past `generation` by the time the query would start: a newer
    // question is already queued.
    QFuture<std::optional<QList<int>>>
    query(const QList<FileItem> &files, const FileListQuery &query, QFuture<SharedOrders> orders,
          std::shared_ptr<const std::atomic<quint64>> latest, quint64 generation);

    // Returns once everything asked so far is done.
    void waitForDone();

private:
    SerialQueue m_orderQueue;
    SerialQueue m_nameQueue;
    SerialQueue m_queryQueue;
};

} // namespace ravelinth
