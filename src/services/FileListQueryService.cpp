#include "services/FileListQueryService.h"

#include <QPromise>

namespace ravelinth {

FileListQueryService::~FileListQueryService() {
    waitForDone();
}

FileListQueryService::Preparation FileListQueryService::prepare(const QList<FileItem> &files,
                                                                bool sumTotals) {
    auto base = std::make_shared<QPromise<SharedOrders>>();
    auto named = std::make_shared<QPromise<SharedOrders>>();
    auto totals = std::make_shared<QPromise<FileTotals>>();
    Preparation preparation{base->future(), named->future(), totals->future()};
    base->start();
    named->start();
    totals->start();
    // Sizes and dates on one thread, names on another: the list is first shown by size, and a
    // sort by name asked for right after should not wait for the dates before its own work
    // starts. The totals come last; they are read later than either order.
    m_orderQueue.run([files, base] {
        base->addResult(
            SharedOrders(std::make_shared<FileListOrders>(computeFileListOrders(files))));
        base->finish();
    });
    m_nameQueue.run([files, baseOrders = base->future(), named, totals, sumTotals]() mutable {
        FileListOrders names;
        if (files.size() > 1)
            addNameOrder(names, files);
        auto orders = std::make_shared<FileListOrders>(*baseOrders.result());
        orders->byName = std::move(names.byName);
        orders->nameRanks = std::move(names.nameRanks);
        named->addResult(SharedOrders(std::move(orders)));
        named->finish();
        if (sumTotals)
            totals->addResult(sumFileTotals(files));
        totals->finish();
    });
    return preparation;
}

QFuture<std::optional<QList<int>>> FileListQueryService::query(
    const QList<FileItem> &files, const FileListQuery &query, QFuture<SharedOrders> orders,
    std::shared_ptr<const std::atomic<quint64>> latest, quint64 generation) {
    return m_queryQueue.run([files, query, orders, latest, generation]() mutable {
        if (*latest != generation)
            return std::optional<QList<int>>();
        return std::optional<QList<int>>(queryFileList(files, query, *orders.result()));
    });
}

void FileListQueryService::waitForDone() {
    m_queryQueue.waitForDone();
    m_nameQueue.waitForDone();
    m_orderQueue.waitForDone();
}

} // namespace ravelinth
