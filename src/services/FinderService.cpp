#include "services/FinderService.h"

// Placeholder so the tree links; the real service replaces it.
namespace ravelinth {

struct FinderService::Private {};

FinderService::FinderService(QObject *parent) : QObject(parent) {}

FinderService::~FinderService() = default;

FinderService &FinderService::shared() {
    static FinderService *instance = new FinderService;
    return *instance;
}

void FinderService::revealInFinder(const QList<QByteArray> &) {}

QFuture<std::optional<QString>> FinderService::selectFolder(const QString &,
                                                            const std::optional<QString> &) {
    return {};
}

void FinderService::completeFolderSelection(const QString &) {}

} // namespace ravelinth
