#include "viewmodels/RavelinthViewModel.h"

#include "models/ByteCountFormatter.h"
#include "models/CheckedMath.h"
#include "models/RelativeDateFormatter.h"
#include "services/DiskInfoService.h"
#include "services/FileListQuery.h"
#include "services/FileScannerService.h"
#include "services/FinderService.h"
#include "services/TrashService.h"
#include "utility/BackgroundRelease.h"
#include "utility/SerialQueue.h"
#include "utility/WhenFinished.h"
#include "viewmodels/ScanThreshold.h"

#include <QDir>
#include <QPointer>
#include <QPromise>

#include <algorithm>
#include <atomic>

namespace ravelinth {

namespace {

// The handle of one scan task: cancelling it marks it, and a scan that fails after that ends
// as cancelled instead of as an error.
struct ScanTask {
    bool isCancelled = false;
};

struct QueryAnswer {
    QList<int> rows;
    bool skipped = false;
};

using SharedOrders = std::shared_ptr<const FileListOrders>;

QList<CategoryStats> largestFirst(QList<CategoryStats> stats) {
    std::stable_sort(
        stats.begin(), stats.end(),
        [](const CategoryStats &a, const CategoryStats &b) { return a.totalSize > b.totalSize; });
    return stats;
}

// The list's totals, summed in one pass.
struct ListTotals {
    qint64 totalSize = 0;
    qint64 savings = 0;
    int savingsCount = 0;
};

bool countsAsSavings(const FileItem &file);

// A list at least this long has its totals summed beside the queries rather than at once.
constexpr qsizetype summedBesideFrom = 20000;

ListTotals sumTotals(const QList<FileItem> &files) {
    ListTotals totals;
    for (qsizetype i = 0; i < files.size(); ++i) {
        // The paths lie all over the heap: ask for the next ones early.
        if (i + 8 < files.size())
            __builtin_prefetch(files[i + 8].path.constData());
        const FileItem &file = files[i];
        totals.totalSize = checkedAdd(totals.totalSize, file.size);
        if (countsAsSavings(file)) {
            totals.savings = checkedAdd(totals.savings, file.size);
            ++totals.savingsCount;
        }
    }
    return totals;
}

bool countsAsSavings(const FileItem &file) {
    return file.category == ScanCategory::installer || file.category == ScanCategory::archive ||
           file.category == ScanCategory::cache || file.isDefinitelySafe();
}

} // namespace

struct RavelinthViewModel::Private {
    std::optional<DiskInfo> diskInfo;
    ScanState scanState;
    QList<FileItem> files;
    FileSelection selection;
    // The selection read as identifiers, built when first asked for after a change.
    mutable std::optional<QSet<QUuid>> selectedIds;
    QList<CategoryStats> categoryStats;
    QString scanPath = QDir::homePath();
    double minFileSizeMB = 100.0;
    SortOption sortOption = SortOption::sizeDescending;
    std::optional<ScanCategory> categoryFilter;
    QString searchText;
    bool showSettings = false;
    std::optional<QString> errorMessage;
    bool includeHiddenFiles = false;
    bool progressAnnouncementPending = false;

    DiskInfoService diskInfoService;
    TrashService trashService;
    std::shared_ptr<FileScannerService> scannerService;
    std::shared_ptr<ScanTask> scanTask;

    DisplayedFilesModel *displayedModel = nullptr;
    // Queries run one at a time off the main thread; only the newest one is published.
    SerialQueue queryQueue;
    // The list's orders are worked out once per list, beside the queries: sizes and dates at
    // once, then the names' collation, which is slow. A query that needs them waits for them
    // there instead of doing the same work again.
    SerialQueue orderQueue;
    std::shared_ptr<std::atomic<quint64>> latestQuery = std::make_shared<std::atomic<quint64>>(0);
    quint64 publishedQuery = 0;
    quint64 filesGeneration = 0;
    QFuture<SharedOrders> baseOrders;  // for filesGeneration
    QFuture<SharedOrders> namedOrders; // for filesGeneration
    SharedOrders orders;               // the best known for filesGeneration, or none
    // The totals of filesGeneration, once summed. A long list is summed beside the queries and
    // announced with totalsChanged; a read from C++ before that sums it at once, while the window
    // sees zeros until then: summing a million paths would hold up the frame.
    mutable std::optional<ListTotals> totals;
    const ListTotals &currentTotals() const {
        if (!totals)
            totals = sumTotals(files);
        return *totals;
    }
    ListTotals shownTotals() const { return totals.value_or(ListTotals{}); }

    FileListQuery query() const { return {categoryFilter, searchText, sortOption}; }
};

RavelinthViewModel::RavelinthViewModel(QObject *parent)
    : QObject(parent), d(std::make_unique<Private>()) {
    d->displayedModel = new DisplayedFilesModel(d->selection, this);
    QMetaObject::invokeMethod(this, &RavelinthViewModel::loadDiskInfo, Qt::QueuedConnection);
}

RavelinthViewModel::~RavelinthViewModel() {
    if (d->scannerService)
        d->scannerService->cancel();
    d->queryQueue.waitForDone();
    d->orderQueue.waitForDone();
}

// --- state ---

const std::optional<DiskInfo> &RavelinthViewModel::diskInfo() const {
    return d->diskInfo;
}
const ScanState &RavelinthViewModel::scanState() const {
    return d->scanState;
}
const QList<FileItem> &RavelinthViewModel::files() const {
    return d->files;
}
const QSet<QUuid> &RavelinthViewModel::selectedFiles() const {
    if (!d->selectedIds)
        d->selectedIds = d->selection.identifiers(d->files);
    return *d->selectedIds;
}
void RavelinthViewModel::setSelectedFiles(QSet<QUuid> selection) {
    d->selection.assign(d->filesGeneration, d->files, selection);
    selectionChanged();
}
void RavelinthViewModel::selectionChanged() {
    d->selectedIds.reset();
    d->displayedModel->selectionChanged();
    emit selectedFilesChanged();
}
const QList<CategoryStats> &RavelinthViewModel::categoryStats() const {
    return d->categoryStats;
}
SortOption RavelinthViewModel::sortOption() const {
    return d->sortOption;
}
void RavelinthViewModel::setSortOption(SortOption option) {
    if (d->sortOption == option)
        return;
    d->sortOption = option;
    emit sortOptionChanged();
    requestDisplayedFiles();
}
std::optional<ScanCategory> RavelinthViewModel::categoryFilter() const {
    return d->categoryFilter;
}
void RavelinthViewModel::setCategoryFilter(std::optional<ScanCategory> category) {
    if (d->categoryFilter == category)
        return;
    d->categoryFilter = category;
    emit categoryFilterChanged();
    requestDisplayedFiles();
}
const std::optional<QString> &RavelinthViewModel::errorMessage() const {
    return d->errorMessage;
}
void RavelinthViewModel::setErrorMessage(std::optional<QString> message) {
    d->errorMessage = std::move(message);
    emit errorMessageChanged();
}
QString RavelinthViewModel::scanPath() const {
    return d->scanPath;
}
void RavelinthViewModel::setScanPath(const QString &path) {
    if (d->scanPath == path)
        return;
    d->scanPath = path;
    emit scanPathChanged();
}
double RavelinthViewModel::minFileSizeMB() const {
    return d->minFileSizeMB;
}
void RavelinthViewModel::setMinFileSizeMB(double megabytes) {
    if (d->minFileSizeMB == megabytes)
        return;
    d->minFileSizeMB = megabytes;
    emit minFileSizeMBChanged();
}
QString RavelinthViewModel::searchText() const {
    return d->searchText;
}
void RavelinthViewModel::setSearchText(const QString &text) {
    if (d->searchText == text)
        return;
    d->searchText = text;
    emit searchTextChanged();
    requestDisplayedFiles();
}
bool RavelinthViewModel::showSettings() const {
    return d->showSettings;
}
void RavelinthViewModel::setShowSettings(bool show) {
    if (d->showSettings == show)
        return;
    d->showSettings = show;
    emit showSettingsChanged();
}
bool RavelinthViewModel::includeHiddenFiles() const {
    return d->includeHiddenFiles;
}
void RavelinthViewModel::setIncludeHiddenFiles(bool include) {
    if (d->includeHiddenFiles == include)
        return;
    d->includeHiddenFiles = include;
    emit includeHiddenFilesChanged();
}

bool RavelinthViewModel::isScanning() const {
    return d->scanState.isScanning();
}
int RavelinthViewModel::fileCount() const {
    return int(d->files.size());
}
int RavelinthViewModel::selectedCount() const {
    return int(d->selection.count());
}
int RavelinthViewModel::displayedCount() const {
    return d->displayedModel->rowCount();
}
QAbstractItemModel *RavelinthViewModel::displayedFilesModel() const {
    return d->displayedModel;
}

void RavelinthViewModel::setScanState(ScanState state) {
    d->scanState = std::move(state);
    emit scanStateChanged();
}

// Progress comes in batches, a report each; the window redraws once per batch anyway, and each
// announcement re-evaluates every binding on the state. So the state follows each report at
// once, and one announcement follows the batch.
void RavelinthViewModel::setProgressState(ScanState state) {
    d->scanState = std::move(state);
    if (std::exchange(d->progressAnnouncementPending, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            d->progressAnnouncementPending = false;
            emit scanStateChanged();
        },
        Qt::QueuedConnection);
}

void RavelinthViewModel::setFiles(QList<FileItem> files) {
    // The selection follows the files it names into the new list.
    const QSet<QUuid> selected =
        d->selection.count() > 0 ? d->selection.identifiers(d->files) : QSet<QUuid>();
    std::swap(d->files, files);
    releaseInBackground(std::move(files));
    ++d->filesGeneration;
    const bool selectionMoved = d->selection.count() > 0;
    d->selection.assign(d->filesGeneration, d->files, selected);
    d->selectedIds.reset();
    d->totals.reset();
    computeOrders();
    emit filesChanged();
    // A short list is summed at once; a long one when its orders are made.
    if (d->files.size() < summedBesideFrom) {
        d->currentTotals();
        emit totalsChanged();
    }
    if (selectionMoved)
        emit selectedFilesChanged();
    requestDisplayedFiles();
}

void RavelinthViewModel::computeOrders() {
    const quint64 generation = d->filesGeneration;
    const QList<FileItem> files = d->files;
    d->orders.reset();
    auto base = std::make_shared<QPromise<SharedOrders>>();
    auto named = std::make_shared<QPromise<SharedOrders>>();
    d->baseOrders = base->future();
    d->namedOrders = named->future();
    base->start();
    named->start();
    const bool sumsTotals = files.size() >= summedBesideFrom;
    auto totals = std::make_shared<QPromise<ListTotals>>();
    QFuture<ListTotals> summed = totals->future();
    totals->start();
    d->orderQueue.run([files, base, named, totals, sumsTotals] {
        if (sumsTotals)
            totals->addResult(sumTotals(files));
        totals->finish();
        auto orders = std::make_shared<FileListOrders>(computeFileListOrders(files));
        base->addResult(SharedOrders(std::make_shared<FileListOrders>(*orders)));
        base->finish();
        if (files.size() > 1)
            addNameOrder(*orders, files);
        named->addResult(SharedOrders(std::move(orders)));
        named->finish();
    });
    const auto keep = [this, generation](const SharedOrders &orders) {
        if (generation != d->filesGeneration)
            return;
        if (!d->orders || d->orders->byName.size() < orders->byName.size())
            d->orders = orders;
        // The full orders serve every query from now on; the first copy can go.
        if (!d->orders->nameRanks.isEmpty() || d->files.size() <= 1)
            d->baseOrders = d->namedOrders;
    };
    if (sumsTotals) {
        whenFinished(summed, this, [this, generation](const ListTotals &result) {
            if (generation != d->filesGeneration)
                return;
            d->totals = result;
            emit totalsChanged();
        });
    }
    whenFinished(d->baseOrders, this, keep);
    whenFinished(d->namedOrders, this, keep);
}

void RavelinthViewModel::setCategoryStats(QList<CategoryStats> stats) {
    d->categoryStats = std::move(stats);
    emit categoryStatsChanged();
}

// --- the list query ---

QList<FileItem> RavelinthViewModel::displayedFiles() const {
    const QList<int> rows = d->orders ? queryFileList(d->files, d->query(), *d->orders)
                                      : queryFileList(d->files, d->query());
    QList<FileItem> shown;
    shown.reserve(rows.size());
    for (int index : rows)
        shown.append(std::as_const(d->files)[index]);
    return shown;
}

QList<FileItem> RavelinthViewModel::selectedFileItems() const {
    QList<FileItem> selected;
    if (d->selection.count() == 0)
        return selected;
    for (qsizetype i = 0; i < d->files.size(); ++i) {
        if (d->selection.contains(i))
            selected.append(std::as_const(d->files)[i]);
    }
    return selected;
}

qint64 RavelinthViewModel::totalScannedSize() const {
    return d->currentTotals().totalSize;
}

qint64 RavelinthViewModel::potentialSavings() const {
    return d->currentTotals().savings;
}

int RavelinthViewModel::potentialSavingsFileCount() const {
    return d->currentTotals().savingsCount;
}

void RavelinthViewModel::requestDisplayedFiles() {
    const quint64 generation = ++*d->latestQuery;
    const quint64 filesGeneration = d->filesGeneration;
    const QList<FileItem> files = d->files;
    const FileListQuery query = d->query();
    const bool byName = query.sortOption == SortOption::nameAscending ||
                        query.sortOption == SortOption::nameDescending;
    const QFuture<SharedOrders> orders = byName ? d->namedOrders : d->baseOrders;
    const auto latest = d->latestQuery;

    QFuture<QueryAnswer> answered = d->queryQueue.run([files, query, orders, generation, latest]() {
        QueryAnswer answer;
        // A newer question is already queued: this answer would be dropped.
        if (*latest != generation) {
            answer.skipped = true;
            return answer;
        }
        answer.rows = queryFileList(files, query, *QFuture<SharedOrders>(orders).result());
        return answer;
    });
    whenFinished(answered, this, [this, files, generation, filesGeneration](QueryAnswer answer) {
        if (answer.skipped || generation != *d->latestQuery)
            return;
        d->displayedModel->publish(files, std::move(answer.rows), filesGeneration);
        d->publishedQuery = generation;
        emit displayedFilesChanged();
    });
}

int RavelinthViewModel::fileIndexOfRow(int row) const {
    const int index = d->displayedModel->fileIndexAt(row);
    if (index < 0 || d->displayedModel->generation() == d->filesGeneration)
        return index;
    // The table still shows the list before the last change: find the row's file by identity.
    const QUuid id = d->displayedModel->fileAt(row)->id;
    for (qsizetype i = 0; i < d->files.size(); ++i) {
        if (std::as_const(d->files)[i].id == id)
            return int(i);
    }
    return -1;
}

void RavelinthViewModel::selectAll() {
    d->selection.reset(d->filesGeneration, d->files.size());
    if (d->publishedQuery == *d->latestQuery &&
        d->displayedModel->generation() == d->filesGeneration) {
        for (int index : d->displayedModel->rows())
            d->selection.set(index, true);
    } else {
        const QList<int> rows = d->orders ? queryFileList(d->files, d->query(), *d->orders)
                                          : queryFileList(d->files, d->query());
        for (int index : rows)
            d->selection.set(index, true);
    }
    selectionChanged();
}

// --- disk information ---

void RavelinthViewModel::loadDiskInfo() {
    refreshDiskInfo();
}

QFuture<void> RavelinthViewModel::refreshDiskInfo() {
    auto promise = std::make_shared<QPromise<void>>();
    promise->start();
    QFuture<void> done = promise->future();
    whenFinished(d->diskInfoService.getSystemProfilerDiskInfo(), this,
                 [this, promise](const DiskInfoOutcome &preferred) {
                     if (preferred) {
                         d->diskInfo = *preferred;
                         emit diskInfoChanged();
                         promise->finish();
                         return;
                     }
                     whenFinished(d->diskInfoService.getFileManagerDiskInfo(), this,
                                  [this, promise](const DiskInfoOutcome &fallback) {
                                      if (fallback) {
                                          d->diskInfo = *fallback;
                                          emit diskInfoChanged();
                                      } else {
                                          setErrorMessage(fallback.error().description());
                                      }
                                      promise->finish();
                                  });
                 });
    return done;
}

// --- the scan lifecycle ---

void RavelinthViewModel::startScan() {
    if (d->scanState.isScanning())
        return;
    if (d->scanTask)
        d->scanTask->isCancelled = true;
    if (d->scannerService)
        d->scannerService->cancel();

    setFiles({});
    setCategoryStats({});
    setSelectedFiles({});

    auto scanner = std::make_shared<FileScannerService>();
    scanner->setYieldsToInterface(true);
    d->scannerService = scanner;
    ScanConfiguration configuration;
    configuration.minFileSizeBytes = thresholdBytes(d->minFileSizeMB);
    configuration.includeHiddenFiles = d->includeHiddenFiles;
    configuration.skipSystemDirectories = true;
    configuration.followSymlinks = false;
    setScanState(ScanState::scanning(d->scanPath, 0, 0, {}));

    auto task = std::make_shared<ScanTask>();
    d->scanTask = task;
    // The task begins on a later turn of the main loop and reads the path only then.
    QMetaObject::invokeMethod(
        this,
        [this, scanner, task, configuration] {
            QPointer<RavelinthViewModel> self(this);
            auto progress = [self, task](qint64 files, qint64 bytes, const QString &current) {
                if (self && self->d->scanTask == task)
                    self->setProgressState(
                        ScanState::scanning(self->d->scanPath, files, bytes, current));
            };
            QFuture<ScanOutcome> scan =
                scanner->scan(QFile::encodeName(d->scanPath), configuration, progress);
            // A task cancelled before it began still runs, but stops at its first report.
            if (task->isCancelled)
                scanner->cancel();
            whenFinished(scan, this, [this, scanner, task](const ScanOutcome &outcome) {
                // A stopped scan may still show what it found, but only until another scan
                // starts: a late partial list must not replace a newer scan's results.
                if (task != d->scanTask)
                    return;
                if (outcome) {
                    const ScanResult &result = *outcome;
                    setFiles(result.files);
                    setCategoryStats(largestFirst(QList<CategoryStats>(
                        result.categoryStats.begin(), result.categoryStats.end())));
                    setScanState(ScanState::completed(result.files.size(), result.totalSize,
                                                      result.duration));
                    loadDiskInfo();
                } else if (task->isCancelled) {
                    setScanState(ScanState::cancelled());
                } else {
                    const QString message = outcome.error().description();
                    setScanState(ScanState::error(message));
                    setErrorMessage(message);
                }
            });
        },
        Qt::QueuedConnection);
}

void RavelinthViewModel::stopScan() {
    if (d->scanTask)
        d->scanTask->isCancelled = true;
    // The scanner is looked up when this runs, not now.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (d->scannerService)
                d->scannerService->cancel();
        },
        Qt::QueuedConnection);
    setScanState(ScanState::cancelled());
}

void RavelinthViewModel::browsePath() {
    whenFinished(FinderService::shared().selectFolder(u"Select Folder to Scan"_qs, d->scanPath),
                 this, [this](const std::optional<QString> &path) {
                     if (path)
                         setScanPath(*path);
                 });
}

// --- the deletion workflow ---

void RavelinthViewModel::moveSelectedToTrash() {
    QList<QByteArray> paths;
    for (const FileItem &file : selectedFileItems())
        paths.append(file.path);
    whenFinished(d->trashService.moveToTrash(paths), this,
                 [this](const QList<TrashResult> &results) {
                     QSet<QByteArray> moved;
                     for (const TrashResult &result : results) {
                         if (const auto *success = std::get_if<TrashSuccess>(&result))
                             moved.insert(success->originalPath);
                     }
                     if (!moved.isEmpty()) {
                         QList<FileItem> remaining;
                         remaining.reserve(d->files.size());
                         for (const FileItem &file : std::as_const(d->files)) {
                             if (!moved.contains(file.path))
                                 remaining.append(file);
                         }
                         setFiles(std::move(remaining));
                     }
                     setSelectedFiles({});
                     whenFinished(refreshDiskInfo(), this, [this] { updateCategoryStats(); });
                 });
}

void RavelinthViewModel::moveToTrash(const FileItem &file) {
    const QUuid id = file.id;
    whenFinished(d->trashService.moveToTrash(file.path), this,
                 [this, id](const TrashMoveOutcome &outcome) {
                     if (!outcome) {
                         setErrorMessage(outcome.error().description());
                         return;
                     }
                     QList<FileItem> remaining = d->files;
                     remaining.removeIf([&](const FileItem &entry) { return entry.id == id; });
                     setFiles(std::move(remaining));
                     whenFinished(refreshDiskInfo(), this, [this] { updateCategoryStats(); });
                 });
}

void RavelinthViewModel::revealSelectedInFinder() {
    QList<QByteArray> paths;
    for (const FileItem &file : selectedFileItems())
        paths.append(file.path);
    FinderService::shared().revealInFinder(paths);
}

void RavelinthViewModel::updateCategoryStats() {
    // Categories appear in the order their first file is met, as a table filled in list order.
    QList<CategoryStats> stats;
    std::array<qsizetype, ScanCategory::count> slot;
    slot.fill(-1);
    for (const FileItem &file : std::as_const(d->files)) {
        qsizetype &index = slot[size_t(file.category.index())];
        if (index < 0) {
            index = stats.size();
            stats.append(CategoryStats::make(file.category));
        }
        CategoryStats &entry = stats[index];
        entry.fileCount = checkedAdd(entry.fileCount, 1);
        entry.totalSize = checkedAdd(entry.totalSize, file.size);
    }
    setCategoryStats(largestFirst(std::move(stats)));
}

// --- helpers for the table ---

void RavelinthViewModel::clearSelection() {
    setSelectedFiles({});
}

void RavelinthViewModel::selectOnly(int row) {
    const int index = fileIndexOfRow(row);
    if (index < 0)
        return;
    d->selection.reset(d->filesGeneration, d->files.size());
    d->selection.set(index, true);
    selectionChanged();
}

void RavelinthViewModel::toggleSelected(int row) {
    const int index = fileIndexOfRow(row);
    if (index < 0)
        return;
    d->selection.set(index, !d->selection.contains(index));
    selectionChanged();
}

void RavelinthViewModel::selectRange(int fromRow, int toRow) {
    for (int row = std::min(fromRow, toRow); row <= std::max(fromRow, toRow); ++row)
        d->selection.set(fileIndexOfRow(row), true);
    selectionChanged();
}

bool RavelinthViewModel::isRowSelected(int row) const {
    return d->selection.contains(fileIndexOfRow(row));
}

QString RavelinthViewModel::fileIdAt(int row) const {
    const FileItem *file = d->displayedModel->fileAt(row);
    return file ? file->id.toString(QUuid::WithoutBraces) : QString();
}

QStringList RavelinthViewModel::clickedSet(int row) const {
    const FileItem *clicked = d->displayedModel->fileAt(row);
    if (!clicked)
        return {};
    QStringList ids;
    if (!d->selection.contains(fileIndexOfRow(row)))
        return {clicked->id.toString(QUuid::WithoutBraces)};
    for (const FileItem &file : selectedFileItems())
        ids.append(file.id.toString(QUuid::WithoutBraces));
    return ids;
}

void RavelinthViewModel::moveFileToTrash(const QString &fileId) {
    const QUuid id = QUuid::fromString(fileId);
    for (const FileItem &file : std::as_const(d->files)) {
        if (file.id == id) {
            moveToTrash(file);
            return;
        }
    }
}

QStringList RavelinthViewModel::pathsOf(const QStringList &fileIds) const {
    QHash<QUuid, QString> paths;
    for (const FileItem &file : std::as_const(d->files))
        paths.insert(file.id, file.displayPath());
    QStringList result;
    for (const QString &id : fileIds) {
        const auto found = paths.constFind(QUuid::fromString(id));
        if (found != paths.cend())
            result.append(*found);
    }
    return result;
}

QString RavelinthViewModel::formatByteCount(double bytes) const {
    return ravelinth::formatByteCount(qint64(bytes));
}

QString RavelinthViewModel::formatRelativeDate(double msecsSinceEpoch) const {
    return ravelinth::formatRelativeDate(
        QDateTime::fromMSecsSinceEpoch(qint64(msecsSinceEpoch), QTimeZone::utc()),
        QDateTime::currentDateTimeUtc());
}

QString RavelinthViewModel::sortOptionName(int option) const {
    if (option < 0 || option >= SortOption::count)
        return {};
    return SortOption::allCases()[size_t(option)].rawValue();
}

QStringList RavelinthViewModel::sortOptionNames() const {
    QStringList names;
    for (SortOption option : SortOption::allCases())
        names.append(option.rawValue());
    return names;
}

// --- the QML face ---

QVariant RavelinthViewModel::diskInfoForQml() const {
    if (!d->diskInfo)
        return {};
    const DiskInfo &info = *d->diskInfo;
    const double usage =
        info.totalBytes > 0 ? double(info.usedBytes) / double(info.totalBytes) * 100.0 : 0.0;
    return QVariantMap{{u"name"_qs, info.name},
                       {u"mountPoint"_qs, info.mountPoint},
                       {u"totalBytes"_qs, double(info.totalBytes)},
                       {u"usedBytes"_qs, double(info.usedBytes)},
                       {u"freeBytes"_qs, double(info.freeBytes)},
                       {u"usagePercent"_qs, usage}};
}

QVariantMap RavelinthViewModel::scanStateForQml() const {
    QVariantMap map{{u"statusMessage"_qs, d->scanState.statusMessage()}};
    std::visit(
        [&map](const auto &state) {
            using T = std::decay_t<decltype(state)>;
            if constexpr (std::is_same_v<T, scanstate::Idle>) {
                map.insert(u"kind"_qs, u"idle"_qs);
            } else if constexpr (std::is_same_v<T, scanstate::Scanning>) {
                map.insert(u"kind"_qs, u"scanning"_qs);
                map.insert(u"path"_qs, state.path);
                map.insert(u"filesScanned"_qs, double(state.filesScanned));
                map.insert(u"bytesScanned"_qs, double(state.bytesScanned));
                map.insert(u"currentFile"_qs, state.currentFile);
            } else if constexpr (std::is_same_v<T, scanstate::Completed>) {
                map.insert(u"kind"_qs, u"completed"_qs);
                map.insert(u"filesFound"_qs, double(state.filesFound));
                map.insert(u"totalSize"_qs, double(state.totalSize));
                map.insert(u"duration"_qs, state.duration);
            } else if constexpr (std::is_same_v<T, scanstate::Error>) {
                map.insert(u"kind"_qs, u"error"_qs);
                map.insert(u"message"_qs, state.message);
            } else {
                map.insert(u"kind"_qs, u"cancelled"_qs);
            }
        },
        d->scanState.value());
    return map;
}

QVariantList RavelinthViewModel::categoryStatsForQml() const {
    QVariantList list;
    for (const CategoryStats &stats : std::as_const(d->categoryStats)) {
        list.append(QVariantMap{{u"category"_qs, stats.category.rawValue()},
                                {u"icon"_qs, stats.category.icon()},
                                {u"color"_qs, stats.category.color().name()},
                                {u"fileCount"_qs, double(stats.fileCount)},
                                {u"totalSize"_qs, double(stats.totalSize)}});
    }
    return list;
}

int RavelinthViewModel::sortOptionForQml() const {
    return int(SortOption::Value(d->sortOption));
}
void RavelinthViewModel::setSortOptionForQml(int option) {
    if (option >= 0 && option < SortOption::count)
        setSortOption(SortOption::allCases()[size_t(option)]);
}
QString RavelinthViewModel::categoryFilterForQml() const {
    return d->categoryFilter ? d->categoryFilter->rawValue() : QString();
}
void RavelinthViewModel::setCategoryFilterForQml(const QString &category) {
    setCategoryFilter(category.isEmpty() ? std::nullopt : ScanCategory::fromRawValue(category));
}
QString RavelinthViewModel::errorMessageForQml() const {
    return d->errorMessage.value_or(QString());
}
void RavelinthViewModel::setErrorMessageForQml(const QString &message) {
    setErrorMessage(message.isEmpty() ? std::nullopt : std::optional<QString>(message));
}
double RavelinthViewModel::totalScannedSizeForQml() const {
    return double(d->shownTotals().totalSize);
}
double RavelinthViewModel::potentialSavingsForQml() const {
    return double(d->shownTotals().savings);
}
int RavelinthViewModel::potentialSavingsFileCountForQml() const {
    return int(d->shownTotals().savingsCount);
}

} // namespace ravelinth
