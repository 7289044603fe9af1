#include "services/FileScannerService.h"

#include "models/CheckedMath.h"
#include "platform/DirectoryWalker.h"
#include "platform/StandardLocations.h"
#include "services/ScanPruning.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QPointer>
#include <QThreadPool>
#include <QtConcurrent>

#include <algorithm>
#include <atomic>

namespace ravelinth {

QString FileScannerError::description() const {
    switch (m_code) {
    case pathNotFound:
        return u"Path not found: "_qs + QString::fromUtf8(m_path);
    case enumeratorFailed:
        return u"Failed to create directory enumerator"_qs;
    case permissionDenied:
        break;
    }
    return u"Permission denied"_qs;
}

const QList<QByteArray> &FileScannerService::alwaysSkippedNames() {
    static const QList<QByteArray> names{".Spotlight-V100", ".fseventsd",
                                         ".DocumentRevisions-V100"};
    return names;
}

// The two entries with a slash can never equal a last path component; they stay in the table
// as they are, so in effect only ".Trash" is added.
const QList<QByteArray> &FileScannerService::systemSkippedNames() {
    static const QList<QByteArray> names{".Trash", "Library/Developer",
                                         "Library/Application Support/MobileSync"};
    return names;
}

struct FileScannerService::Private {
    QThreadPool pool;
    // Set by cancel() from any thread; the walk looks at it only after a progress report.
    std::atomic<bool> cancelRequested{false};
    // Set on destruction: ends a walk at the next entry, whatever the progress count.
    std::atomic<bool> abandoned{false};
    std::atomic<qint64> filesScanned{0};
    std::atomic<qint64> bytesScanned{0};
};

FileScannerService::FileScannerService(QObject *parent)
    : QObject(parent), d(std::make_unique<Private>()) {
    d->pool.setMaxThreadCount(1);
}

FileScannerService::~FileScannerService() {
    d->abandoned = true;
    d->pool.waitForDone();
}

void FileScannerService::cancel() {
    d->cancelRequested = true;
}

qint64 FileScannerService::filesScanned() const {
    return d->filesScanned;
}
qint64 FileScannerService::bytesScanned() const {
    return d->bytesScanned;
}

QFuture<ScanOutcome> FileScannerService::scan(QByteArray path, ScanConfiguration configuration,
                                              ScanProgressHandler progressHandler) {
    // A cancel that arrives before the scan begins is lost, as the flag starts every scan clear.
    d->cancelRequested = false;
    d->filesScanned = 0;
    d->bytesScanned = 0;
    QPointer<FileScannerService> self(this);
    Private *state = d.get();

    auto report = [self, progressHandler](qint64 files, qint64 bytes, QString current) {
        if (!progressHandler)
            return;
        // Queued to the service's (the caller's) thread; the walk does not wait for it.
        QMetaObject::invokeMethod(
            self.data(),
            [progressHandler, files, bytes, current = std::move(current)] {
                progressHandler(files, bytes, current);
            },
            Qt::QueuedConnection);
    };

    return QtConcurrent::run(
        &d->pool, [state, path = std::move(path), configuration, report]() -> ScanOutcome {
            qint64 filesScanned = 0;
            qint64 bytesScanned = 0;
            QList<FileItem> largeFiles;
            CategoryStatsTable categoryStats = makeEmptyCategoryStatsTable();
            QElapsedTimer clock;
            clock.start();

            platform::WalkOptions options;
            options.skipHiddenEntries = !configuration.includeHiddenFiles;
            options.isPruned = makeScanPruning(configuration.skipSystemDirectories);
            platform::DirectoryWalker walker(path, options);
            switch (walker.open()) {
            case platform::WalkOpenResult::notFound:
                return FileScannerError::makePathNotFound(path);
            case platform::WalkOpenResult::failed:
                return FileScannerError::makeEnumeratorFailed();
            case platform::WalkOpenResult::ok:
            case platform::WalkOpenResult::notAFolder:
                break;
            }

            bool isCancelled = false;
            walker.walk([&](const platform::WalkEntry &entry) {
                if (isCancelled || state->abandoned)
                    return platform::WalkDecision::stop;
                if (!entry.hasAttributes)
                    return platform::WalkDecision::skipDescendants;
                if (entry.isDirectory)
                    return platform::WalkDecision::proceed;

                filesScanned = checkedAdd(filesScanned, 1);
                bytesScanned = checkedAdd(bytesScanned, entry.size);
                if (filesScanned % 100 == 0) {
                    state->filesScanned = filesScanned;
                    state->bytesScanned = bytesScanned;
                    report(filesScanned, bytesScanned, QString::fromUtf8(entry.path));
                    // The only point where a stop request can reach the walk.
                    isCancelled = state->cancelRequested;
                }
                if (entry.size >= configuration.minFileSizeBytes) {
                    const ScanCategory category =
                        ScanCategory::isInCacheDirectory(entry.path)
                            ? ScanCategory(ScanCategory::cache)
                            : ScanCategory::from(fileExtensionOf(entry.name));
                    largeFiles.append(FileItem::make(entry.path.toByteArray(), entry.size,
                                                     entry.modifiedMSecs, category));
                    CategoryStats &stats = categoryStats[category.index()];
                    stats.fileCount = checkedAdd(stats.fileCount, 1);
                    stats.totalSize = checkedAdd(stats.totalSize, entry.size);
                }
                return platform::WalkDecision::proceed;
            });
            state->filesScanned = filesScanned;
            state->bytesScanned = bytesScanned;

            ScanResult result;
            result.duration = double(clock.nsecsElapsed()) / 1e9;
            for (const FileItem &item : std::as_const(largeFiles))
                result.totalSize = checkedAdd(result.totalSize, item.size);
            std::stable_sort(largeFiles.begin(), largeFiles.end(),
                             [](const FileItem &a, const FileItem &b) { return a.size > b.size; });
            result.files = std::move(largeFiles);
            result.categoryStats = categoryStats;
            result.scannedPath = path;
            result.timestamp = QDateTime::currentDateTimeUtc();
            return result;
        });
}

} // namespace ravelinth
