#include "services/FileScannerService.h"

#include "models/CheckedMath.h"
#include "models/DisplayText.h"
#include "platform/DirectoryWalker.h"
#include "platform/EntryResolution.h"
#include "platform/MountTable.h"
#include "platform/ParallelDirectoryWalker.h"
#include "platform/ThreadPriority.h"
#include "platform/WorkingFolder.h"
#include "services/MountBoundary.h"
#include "services/ProgressMailbox.h"
#include "services/ScanCounter.h"
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
#include <mutex>
#include <optional>
#include <thread>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ravelinth {

QString FileScannerError::description() const {
    switch (m_code) {
    case pathNotFound:
        return u"Path not found: "_qs + displayText(m_path);
    case enumeratorFailed:
        return u"Failed to create directory enumerator"_qs;
    case notAFolder:
        return u"Not a folder: "_qs + displayText(m_path);
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
    // walkThreads is the most: the walk lets in as many as the device keeps busy.
    bool adaptiveWalkers = false;
    std::atomic<bool> yieldsToInterface{false};
    QThreadPool pool;
    // Set by cancel() from any thread; the walk looks at it after each progress report and
    // before each folder it opens.
    std::atomic<bool> cancelRequested{false};
    // Set on destruction: ends a walk at the next entry, whatever the progress count.
    std::atomic<bool> abandoned{false};
    std::atomic<qint64> filesScanned{0};
    std::atomic<qint64> bytesScanned{0};
};

namespace {

// RAVELINTH_SCAN_THREADS=N, for measuring, walks on exactly N threads (1: on the scan's own).
int chosenWalkThreads() {
    bool ok = false;
    const int chosen = qEnvironmentVariableIntValue("RAVELINTH_SCAN_THREADS", &ok);
    return ok && chosen > 0 ? std::min(chosen, 64) : 0;
}

} // namespace

int FileScannerService::defaultWalkThreads() {
    if (const int chosen = chosenWalkThreads())
        return chosen;
    // The most walkers a scan may use. It starts with two per core, which keep the cores busy
    // while the tree is in memory, and lets more in only while they sleep on the device: a cold
    // tree on a solid-state disk is read fastest with many requests in flight at once.
    return 32;
}

FileScannerService::FileScannerService(QObject *parent)
    : FileScannerService(defaultWalkThreads(), parent) {
    d->adaptiveWalkers = chosenWalkThreads() == 0;
}

FileScannerService::FileScannerService(int walkThreads, QObject *parent)
    : QObject(parent), d(std::make_unique<Private>()) {
    d->walkThreads = std::max(1, walkThreads);
    d->pool.setMaxThreadCount(1);
}

FileScannerService::~FileScannerService() {
    d->abandoned = true;
    d->pool.waitForDone();
}

void FileScannerService::setYieldsToInterface(bool yields) {
    d->yieldsToInterface = yields;
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

ScanCategory categoryOf(QByteArrayView path, QByteArrayView name) {
    return ScanCategory::isInCacheDirectory(path) ? ScanCategory(ScanCategory::cache)
                                                  : ScanCategory::from(fileExtensionOf(name));
}

// What one walker keeps to itself until the walk ends.
struct WalkerShare {
    std::vector<std::uint32_t> keptAt; // where each item it kept went in the counter's list
    PendingFiles pending;
};

platform::WalkVisit visitEntry(const platform::WalkEntry &entry, ScanCounter &counter,
                               qint64 minFileSizeBytes, WalkerShare &share) {
    std::vector<std::uint32_t> &keptAt = share.keptAt;
    if (entry.unreadableFolder) {
        keptAt.push_back(unreadableMark | counter.noteUnreadable(entry.path));
        return {platform::WalkDecision::proceed, true};
    }
    if (counter.isStopped())
        return {platform::WalkDecision::stop, false};
    if (!entry.hasAttributes)
        return {platform::WalkDecision::skipDescendants, false};
    if (entry.isDirectory)
        return {platform::WalkDecision::proceed, false};
    std::optional<FileItem> item;
    if (entry.size >= minFileSizeBytes) {
        item = FileItem::make(entry.path.toByteArray(), entry.size, entry.modifiedMSecs,
                              categoryOf(entry.path, entry.name), entry.linkCount);
    }
    const qsizetype at = counter.count(entry, std::move(item), share.pending);
    if (at == ScanCounter::stopped)
        return {platform::WalkDecision::stop, false};
    if (at == ScanCounter::notKept)
        return {platform::WalkDecision::proceed, false};
    keptAt.push_back(std::uint32_t(at));
    return {platform::WalkDecision::proceed, true};
}

// Puts `files[order[k]]` at place k for every k, moving each file once; `order` is used up.
void permuteInPlace(QList<FileItem> &files, std::vector<std::uint32_t> &order) {
    constexpr std::uint32_t done = UINT32_MAX;
    for (std::uint32_t start = 0; start < order.size(); ++start) {
        if (order[start] == done || order[start] == start) {
            order[start] = done;
            continue;
        }
        FileItem held = std::move(files[start]);
        std::uint32_t at = start;
        while (order[at] != start) {
            const std::uint32_t from = order[at];
            files[at] = std::move(files[from]);
            order[at] = done;
            at = from;
        }
        files[at] = std::move(held);
        order[at] = done;
    }
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

    // Taken now, on the caller's thread: the working folder is the caller's at the call.
    std::optional<QByteArray> absolute = platform::absolutePath(path);

    return QtConcurrent::run(
        &d->pool,
        [state, path = std::move(path), absolute = std::move(absolute), configuration, report,
         mailbox]() -> ScanOutcome {
            QElapsedTimer clock;
            clock.start();
            if (!absolute)
                return FileScannerError::makePathNotFound(path);
            platform::WalkOptions options;
            options.skipHiddenEntries = !configuration.includeHiddenFiles;
            addScanPruning(options, configuration.skipSystemDirectories);
            addScanExclusions(options, configuration.exclusions, *absolute);
            MountBoundary boundary(
                platform::readMountTable(), *absolute,
                {configuration.stayOnOneFileSystem, configuration.scanNetworkDrives});
            boundary.applyTo(options);
            options.isStopRequested = [state] {
                return state->cancelRequested.load(std::memory_order_relaxed) ||
                       state->abandoned.load(std::memory_order_relaxed);
            };
            ScanCounter counter(state->cancelRequested, state->abandoned, report);
            const int workers = state->walkThreads;
            const bool yields = state->yieldsToInterface;
            if (yields)
                platform::yieldToInteractiveThreads();
            std::vector<WalkerShare> shares(static_cast<size_t>(workers));
            std::vector<platform::EmittedRun> runs;

            auto opened = [&path](platform::WalkOpenResult result) -> std::optional<ScanOutcome> {
                switch (result) {
                case platform::WalkOpenResult::notFound:
                    return FileScannerError::makePathNotFound(path);
                case platform::WalkOpenResult::notAFolder:
                    return FileScannerError::makeNotAFolder(path);
                case platform::WalkOpenResult::failed:
                    return FileScannerError::makeEnumeratorFailed();
                case platform::WalkOpenResult::ok:
                    break;
                }
                return std::nullopt;
            };

            if (workers == 1) {
                platform::DirectoryWalker walker(*absolute, options);
                if (auto failure = opened(walker.open()))
                    return *failure;
                walker.walk([&](const platform::WalkEntry &entry) {
                    return visitEntry(entry, counter, configuration.minFileSizeBytes, shares[0])
                        .decision;
                });
                runs.push_back({0, 0, std::uint32_t(shares[0].keptAt.size())});
            } else {
                platform::ParallelDirectoryWalker walker(*absolute, options, workers,
                                                         state->adaptiveWalkers);
                if (auto failure = opened(walker.open()))
                    return *failure;
                const platform::ParallelDirectoryWalker::Visit visit =
                    [&](int worker, const platform::WalkEntry &entry) {
                        return visitEntry(entry, counter, configuration.minFileSizeBytes,
                                          shares[size_t(worker)]);
                    };
                // Plain threads, joined: a join is a hand-over that thread checkers see, which
                // a thread pool's wait is not.
                std::vector<std::thread> others;
                for (int worker = 1; worker < workers; ++worker) {
                    others.emplace_back([&walker, &visit, worker, yields] {
                        if (yields)
                            platform::yieldToInteractiveThreads();
                        walker.runWorker(worker, visit);
                    });
                }
                walker.runWorker(0, visit);
                for (std::thread &other : others)
                    other.join();
                runs = walker.emittedInWalkOrder();
            }
            for (WalkerShare &share : shares)
                counter.flush(share.pending);
            state->filesScanned = counter.files();
            state->bytesScanned = counter.bytes();
            // Every report reaches the caller's thread before the result does.
            if (mailbox)
                mailbox->flush();

            ScanResult result;
            result.duration = double(clock.nsecsElapsed()) / 1e9;
            result.categoryStats = makeEmptyCategoryStatsTable();
            QList<FileItem> &files = counter.kept();
            files.squeeze();

            // Largest first; equal sizes keep the order of a single depth-first walk. The sums
            // are taken in that order too, so the first kept name of linked data is the one that
            // counts it, however many walkers met its names and in what order.
            std::vector<std::pair<qint64, std::uint32_t>> bySize;
            bySize.reserve(size_t(files.size()));
            DataIdentitySet countedLinks;
            std::unordered_set<QByteArray> reportedUnreadable;
            for (const platform::EmittedRun &run : runs) {
                const std::vector<std::uint32_t> &places = shares[run.worker].keptAt;
                for (std::uint32_t i = run.start; i < run.start + run.count; ++i) {
                    const std::uint32_t place = places[i];
                    if (place & unreadableMark) {
                        // Two walkers sharing a folder that can be listed but not entered may
                        // both report it.
                        QByteArray &path = counter.unreadable()[place & ~unreadableMark];
                        if (!reportedUnreadable.insert(path).second)
                            continue;
                        ++result.unreadableFolders;
                        if (result.unreadablePaths.size() < ScanResult::unreadablePathsKept)
                            result.unreadablePaths.append(std::move(path));
                        continue;
                    }
                    FileItem &file = files[place];
                    if (file.linkCount > 1 && !countedLinks.insert(counter.keptLink(place)).second)
                        file.countedUnderAnotherName = true;
                    CategoryStats &stats = result.categoryStats[file.category.index()];
                    stats.fileCount = checkedAdd(stats.fileCount, 1);
                    stats.totalSize = checkedAdd(stats.totalSize, file.countedSize());
                    result.totalSize = checkedAdd(result.totalSize, file.countedSize());
                    bySize.emplace_back(file.size, place);
                }
            }
            shares = {};
            counter.unreadable() = {};
            std::stable_sort(bySize.begin(), bySize.end(),
                             [](const auto &a, const auto &b) { return a.first > b.first; });
            std::vector<std::uint32_t> order(bySize.size());
            for (size_t i = 0; i < order.size(); ++i)
                order[i] = bySize[i].second;
            bySize = {};
            permuteInPlace(files, order);
            result.files = std::move(files);
            result.skippedMounts = boundary.skipped();
            result.scannedPath = *absolute;
            result.timestamp = QDateTime::currentDateTimeUtc();
            return result;
        });
}

std::optional<FileItem> FileScannerService::examineFile(const QByteArray &path) {
    const std::optional<platform::RegularFileAttributes> attributes =
        platform::regularFileAttributes(path);
    if (!attributes)
        return std::nullopt;
    return FileItem::make(path, attributes->size, attributes->modifiedMSecs,
                          categoryOf(path, lastPathComponent(path)), attributes->linkCount);
}

} // namespace ravelinth
