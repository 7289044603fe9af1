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
    m_orderQueue.run([files, base, named, totals, sumTotals] {
        if (sumTotals)
            totals->addResult(sumFileTotals(files));
        totals->finish();
        auto orders = std::make_shared<FileListOrders>(computeFileListOrders(files));
        base->addResult(SharedOrders(std::make_shared<FileListOrders>(*orders)));
        base->finish();
        if (files.size() > 1)
            addNameOrder(*orders, files);
        named->addResult(SharedOrders(std::move(orders)));
        named->finish();
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
    m_orderQueue.waitForDone();
}

} // namespace ravelinth
