#include "viewmodels/DiskInfoController.h"

#include "utility/WhenFinished.h"

#include <QPromise>

namespace ravelinth {

DiskInfoController::DiskInfoController(QObject *parent) : QObject(parent) {}

void DiskInfoController::refresh() {
    reload();
}

QFuture<void> DiskInfoController::reload() {
    auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    QFuture<void> done = promise->future();
    whenFinished(m_service.getSystemProfilerDiskInfo(), this,
                 [this, promise](const DiskInfoOutcome &preferred) {
                     if (preferred) {
                         setInfo(*preferred);
                         promise->finish();
                         return;
                     }
                     whenFinished(m_service.getFileManagerDiskInfo(), this,
                                  [this, promise](const DiskInfoOutcome &fallback) {
                                      if (fallback)
                                          setInfo(*fallback);
                                      else
                                          emit failed(fallback.error().description());
                                      promise->finish();
                                  });
                 });
    return done;
}

void DiskInfoController::setInfo(DiskInfo info) {
    m_info = std::move(info);
    emit infoChanged();
}

} // namespace ravelinth
