#include "services/FileScannerService.h"

#include "models/CheckedMath.h"
#include "platform/DirectoryWalker.h"
#include "platform/ParallelDirectoryWalker.h"
#include "platform/StandardLocations.h"
#include "services/ScanPruning.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QPointer>
#include <QThread>
#include <QThreadPool>
#include <QTimer>
#include <QtConcurrent>

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

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
    int walkThreads = 1;
    QThreadPool pool;
    // Runs the walk's workers besides the one on `pool`'s thread.
    QThreadPool walkPool;
    // Set by cancel() from any thread; the walk looks at it only after a progress report.
    std::atomic<bool> cancelRequested{false};
    // Set on destruction: ends a walk at the next entry, whatever the progress count.
    std::atomic<bool> abandoned{false};
    std::atomic<qint64> filesScanned{0};
    std::atomic<qint64> bytesScanned{0};
};

int FileScannerService::defaultWalkThreads() {
    // Two walkers nearly halve a scan even on two cores, as the time goes to system calls; past
    // a few, they only contend for the same folders' locks.
    return std::clamp(QThread::idealThreadCount(), 2, 4);
}

FileScannerService::FileScannerService(QObject *parent)
    : FileScannerService(defaultWalkThreads(), parent) {}

FileScannerService::FileScannerService(int walkThreads, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>()) {
    d->walkThreads = std::max(1, walkThreads);
    d->pool.setMaxThreadCount(1);
    d->walkPool.setMaxThreadCount(std::max(1, d->walkThreads - 1));
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

namespace {

using ReportProgress = std::function<void(qint64, qint64, QString)>;

// Reports wait here and reach the receiver's thread in batches, every report still on a handler
// call of its own and in order. Waking the main thread for every hundred files cost the walk
// more than the reports themselves; a batch every few milliseconds is still far faster than a
// screen redraws.
class ProgressMailbox : public std::enable_shared_from_this<ProgressMailbox> {
public:
    ProgressMailbox(QPointer<QObject> receiver, ScanProgressHandler handler)
        : m_receiver(std::move(receiver)), m_handler(std::move(handler)) {}

    // Any thread.
    void post(qint64 files, qint64 bytes, QString path) {
        bool schedule = false;
        {
            std::lock_guard lock(m_mutex);
            m_pending.push_back({files, bytes, std::move(path)});
            schedule = !std::exchange(m_scheduled, true);
        }
        if (!schedule)
            return;
        QMetaObject::invokeMethod(
            m_receiver.data(),
            [self = shared_from_this()] {
                QTimer::singleShot(batchMSecs, self->m_receiver.data(),
                                   [self] { self->deliver(); });
            },
            Qt::QueuedConnection);
    }

    // Any thread: hands over what is pending without waiting for the batch's timer.
    void flush() {
        QMetaObject::invokeMethod(
            m_receiver.data(), [self = shared_from_this()] { self->deliver(); },
            Qt::QueuedConnection);
    }

private:
    static constexpr int batchMSecs = 8;

    struct Report {
        qint64 files;
        qint64 bytes;
        QString path;
    };

    void deliver() {
        std::vector<Report> reports;
        {
            std::lock_guard lock(m_mutex);
            reports.swap(m_pending);
            m_scheduled = false;
        }
        for (const Report &report : reports)
            m_handler(report.files, report.bytes, report.path);
    }

    QPointer<QObject> m_receiver;
    ScanProgressHandler m_handler;
    std::mutex m_mutex;
    std::vector<Report> m_pending;
    bool m_scheduled = false;
};

// What the walkers share: the counters behind the progress reports and the stop. Every counted
// file passes through one lock, so the counts, the reports and the point of a stop come in one
// order whatever the number of walkers.
class ScanCounter {
public:
    ScanCounter(std::atomic<bool> &cancelRequested, std::atomic<bool> &abandoned,
                ReportProgress report)
        : m_cancelRequested(cancelRequested), m_abandoned(abandoned), m_report(std::move(report)) {}

    bool isStopped() const {
        return m_stopped.load(std::memory_order_relaxed) ||
               m_abandoned.load(std::memory_order_relaxed);
    }

    // Counts one sized file; false when the walk has already been stopped, so it is not counted.
    bool count(const platform::WalkEntry &entry) {
        std::lock_guard lock(m_mutex);
        if (m_stopped.load(std::memory_order_relaxed))
            return false;
        m_files = checkedAdd(m_files, 1);
        m_bytes = checkedAdd(m_bytes, entry.size);
        if (m_files % 100 == 0) {
            m_report(m_files, m_bytes, QString::fromUtf8(entry.path));
            // The only point where a stop request can reach the walk. This file still counts.
            if (m_cancelRequested)
                m_stopped = true;
        }
        return true;
    }

    qint64 files() const { return m_files; }
    qint64 bytes() const { return m_bytes; }

private:
    std::atomic<bool> &m_cancelRequested;
    std::atomic<bool> &m_abandoned;
    ReportProgress m_report;
    std::mutex m_mutex;
    std::atomic<bool> m_stopped{false};
    qint64 m_files = 0;
    qint64 m_bytes = 0;
};

// The files one walker kept, in the order it met them. A deque grows without moving what it
// holds, so a million kept files never need twice their size at once.
struct KeptFiles {
    std::deque<FileItem> files;
    std::array<std::pair<qint64, qint64>, ScanCategory::count> categories{}; // count, size
};

platform::WalkVisit visitEntry(const platform::WalkEntry &entry, ScanCounter &counter,
                               qint64 minFileSizeBytes, KeptFiles &kept) {
    if (counter.isStopped())
        return {platform::WalkDecision::stop, false};
    if (!entry.hasAttributes)
        return {platform::WalkDecision::skipDescendants, false};
    if (entry.isDirectory)
        return {platform::WalkDecision::proceed, false};
    if (!counter.count(entry))
        return {platform::WalkDecision::stop, false};
    if (entry.size < minFileSizeBytes)
        return {platform::WalkDecision::proceed, false};
    const ScanCategory category = ScanCategory::isInCacheDirectory(entry.path)
                                      ? ScanCategory(ScanCategory::cache)
                                      : ScanCategory::from(fileExtensionOf(entry.name));
    kept.files.push_back(
        FileItem::make(entry.path.toByteArray(), entry.size, entry.modifiedMSecs, category));
    auto &[count, size] = kept.categories[size_t(category.index())];
    count = checkedAdd(count, 1);
    size = checkedAdd(size, entry.size);
    return {platform::WalkDecision::proceed, true};
}

} // namespace

QFuture<ScanOutcome> FileScannerService::scan(QByteArray path, ScanConfiguration configuration,
                                              ScanProgressHandler progressHandler) {
    // A cancel that arrives before the scan begins is lost, as the flag starts every scan clear.
    d->cancelRequested = false;
    d->filesScanned = 0;
    d->bytesScanned = 0;
    Private *state = d.get();

    std::shared_ptr<ProgressMailbox> mailbox;
    if (progressHandler)
        mailbox = std::make_shared<ProgressMailbox>(QPointer<QObject>(this), progressHandler);
    ReportProgress report = [state, mailbox](qint64 files, qint64 bytes, QString current) {
        state->filesScanned = files;
        state->bytesScanned = bytes;
        if (mailbox)
            mailbox->post(files, bytes, std::move(current));
    };

    return QtConcurrent::run(
        &d->pool, [state, path = std::move(path), configuration, report, mailbox]() -> ScanOutcome {
            QElapsedTimer clock;
            clock.start();
            platform::WalkOptions options;
            options.skipHiddenEntries = !configuration.includeHiddenFiles;
            options.isPruned = makeScanPruning(configuration.skipSystemDirectories);
            ScanCounter counter(state->cancelRequested, state->abandoned, report);
            const int workers = state->walkThreads;
            std::vector<KeptFiles> kept(static_cast<size_t>(workers));
            std::vector<platform::EmittedRun> order;

            auto opened = [&path](platform::WalkOpenResult result) -> std::optional<ScanOutcome> {
                switch (result) {
                case platform::WalkOpenResult::notFound:
                    return FileScannerError::makePathNotFound(path);
                case platform::WalkOpenResult::failed:
                    return FileScannerError::makeEnumeratorFailed();
                case platform::WalkOpenResult::ok:
                case platform::WalkOpenResult::notAFolder:
                    break;
                }
                return std::nullopt;
            };

            if (workers == 1) {
                platform::DirectoryWalker walker(path, options);
                if (auto failure = opened(walker.open()))
                    return *failure;
                walker.walk([&](const platform::WalkEntry &entry) {
                    return visitEntry(entry, counter, configuration.minFileSizeBytes, kept[0])
                        .decision;
                });
                order.push_back({0, 0, std::uint32_t(kept[0].files.size())});
            } else {
                platform::ParallelDirectoryWalker walker(path, options, workers);
                if (auto failure = opened(walker.open()))
                    return *failure;
                const platform::ParallelDirectoryWalker::Visit visit =
                    [&](int worker, const platform::WalkEntry &entry) {
                        return visitEntry(entry, counter, configuration.minFileSizeBytes,
                                          kept[size_t(worker)]);
                    };
                QList<QFuture<void>> others;
                for (int worker = 1; worker < workers; ++worker) {
                    others.append(QtConcurrent::run(&state->walkPool, [&walker, &visit, worker] {
                        walker.runWorker(worker, visit);
                    }));
                }
                walker.runWorker(0, visit);
                for (QFuture<void> &other : others)
                    other.waitForFinished();
                order = walker.emittedInWalkOrder();
            }
            state->filesScanned = counter.files();
            state->bytesScanned = counter.bytes();
            // Every report reaches the caller's thread before the result does.
            if (mailbox)
                mailbox->flush();

            ScanResult result;
            result.duration = double(clock.nsecsElapsed()) / 1e9;
            result.categoryStats = makeEmptyCategoryStatsTable();
            for (const KeptFiles &share : kept) {
                for (size_t i = 0; i < share.categories.size(); ++i) {
                    CategoryStats &stats = result.categoryStats[i];
                    stats.fileCount = checkedAdd(stats.fileCount, share.categories[i].first);
                    stats.totalSize = checkedAdd(stats.totalSize, share.categories[i].second);
                }
            }

            // Largest first; equal sizes keep the order of a single depth-first walk.
            std::vector<std::pair<qint64, FileItem *>> bySize;
            for (const platform::EmittedRun &run : order) {
                std::deque<FileItem> &files = kept[run.worker].files;
                for (std::uint32_t i = run.start; i < run.start + run.count; ++i)
                    bySize.emplace_back(files[i].size, &files[i]);
            }
            for (const auto &entry : bySize)
                result.totalSize = checkedAdd(result.totalSize, entry.first);
            std::stable_sort(bySize.begin(), bySize.end(),
                             [](const auto &a, const auto &b) { return a.first > b.first; });
            result.files.reserve(qsizetype(bySize.size()));
            for (const auto &entry : bySize)
                result.files.append(std::move(*entry.second));
            bySize = {};
            kept.clear();
            result.scannedPath = path;
            result.timestamp = QDateTime::currentDateTimeUtc();
            return result;
        });
}

} // namespace ravelinth
