#include "viewmodels/RavelinthViewModel.h"

#include "services/TrashService.h"
#include "utility/WhenFinished.h"
#include "viewmodels/CategoryStatsModel.h"
#include "viewmodels/DiskInfoController.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/FileOperations.h"
#include "viewmodels/MoveUndo.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/PreferencesLink.h"
#include "viewmodels/ScanController.h"
#include "viewmodels/ScanGaps.h"
#include "viewmodels/SelectionController.h"

namespace ravelinth {

// The parts are children of the root, so QML sees them owned by it; the trash service is shared
// by the operations and outlives them.
struct RavelinthViewModel::Parts {
    explicit Parts(RavelinthViewModel *root)
        : scan(new ScanController(root)), disk(new DiskInfoController(root)),
          fileList(new FileListModel(root)), selection(new SelectionController(*fileList, root)),
          operations(new FileOperations(*fileList, trash, root)),
          undo(new MoveUndo(trash, *fileList, *scan, root)),
          categoryStats(new CategoryStatsModel(root)), gaps(new ScanGaps(root)),
          preferences(new Preferences(root)),
          preferencesLink(
              new PreferencesLink(*preferences, {*scan, *fileList, *operations}, root)) {}

    TrashService trash;
    ScanController *scan;
    DiskInfoController *disk;
    FileListModel *fileList;
    SelectionController *selection;
    FileOperations *operations;
    MoveUndo *undo;
    CategoryStatsModel *categoryStats;
    ScanGaps *gaps;
    Preferences *preferences;
    PreferencesLink *preferencesLink;
    bool showSettings = false;
    std::optional<QString> errorMessage;
};

RavelinthViewModel::RavelinthViewModel(QObject *parent)
    : QObject(parent), d(std::make_unique<Parts>(this)) {
    const auto showError = [this](const QString &message) { setErrorMessage(message); };
    const auto clearResults = [this] {
        d->fileList->setFiles({});
        d->categoryStats->setStats({});
        setSelectedFiles({});
    };
    connect(d->scan, &ScanController::starting, this, clearResults);
    connect(d->scan, &ScanController::cleared, this, clearResults);
    connect(d->scan, &ScanController::starting, d->gaps, &ScanGaps::clear);
    connect(d->scan, &ScanController::cleared, d->gaps, &ScanGaps::clear);
    connect(d->scan, &ScanController::finished, d->gaps, &ScanGaps::take);
    connect(d->scan, &ScanController::finished, this, [this](const ScanResult &result) {
        d->fileList->setFiles(result.files);
        d->categoryStats->setStats(
            QList<CategoryStats>(result.categoryStats.begin(), result.categoryStats.end()));
        loadDiskInfo();
    });
    connect(d->scan, &ScanController::failed, this, showError);
    connect(d->disk, &DiskInfoController::failed, this, showError);
    connect(d->operations, &FileOperations::failed, this, showError);
    connect(d->operations, &FileOperations::filesMoved, this,
            &RavelinthViewModel::refreshAfterMove);
    connect(d->operations, &FileOperations::batchMoved, d->undo, &MoveUndo::noteMove);
    connect(d->operations, &FileOperations::folderExclusionRequested, d->preferences,
            &Preferences::addExcludedFolder);
    connect(d->undo, &MoveUndo::filesRestored, this, &RavelinthViewModel::refreshAfterMove);
    connect(d->undo, &MoveUndo::failed, this, showError);
    QMetaObject::invokeMethod(this, &RavelinthViewModel::loadDiskInfo, Qt::QueuedConnection);
}

RavelinthViewModel::~RavelinthViewModel() = default;

ScanController *RavelinthViewModel::scan() const {
    return d->scan;
}
DiskInfoController *RavelinthViewModel::disk() const {
    return d->disk;
}
FileListModel *RavelinthViewModel::fileList() const {
    return d->fileList;
}
SelectionController *RavelinthViewModel::selection() const {
    return d->selection;
}
FileOperations *RavelinthViewModel::operations() const {
    return d->operations;
}
MoveUndo *RavelinthViewModel::undo() const {
    return d->undo;
}
CategoryStatsModel *RavelinthViewModel::categoryStatsModel() const {
    return d->categoryStats;
}
ScanGaps *RavelinthViewModel::gaps() const {
    return d->gaps;
}
Preferences *RavelinthViewModel::preferences() const {
    return d->preferences;
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
const std::optional<QString> &RavelinthViewModel::errorMessage() const {
    return d->errorMessage;
}
void RavelinthViewModel::setErrorMessage(std::optional<QString> message) {
    d->errorMessage = std::move(message);
    emit errorMessageChanged();
}
QString RavelinthViewModel::errorMessageText() const {
    return d->errorMessage.value_or(QString());
}
void RavelinthViewModel::setErrorMessageText(const QString &message) {
    setErrorMessage(message.isEmpty() ? std::nullopt : std::optional<QString>(message));
}

// After a move the disk has more room; the statistics follow once its figures are in.
void RavelinthViewModel::refreshAfterMove() {
    whenFinished(d->disk->reload(), this,
                 [this] { d->categoryStats->countFiles(d->fileList->files()); });
}

// --- typed state ---

const std::optional<DiskInfo> &RavelinthViewModel::diskInfo() const {
    return d->disk->info();
}
const ScanState &RavelinthViewModel::scanState() const {
    return d->scan->state();
}
const QList<FileItem> &RavelinthViewModel::files() const {
    return d->fileList->files();
}
const QSet<QUuid> &RavelinthViewModel::selectedFiles() const {
    return d->selection->identifiers();
}
void RavelinthViewModel::setSelectedFiles(const QSet<QUuid> &selection) {
    d->selection->setIdentifiers(selection);
}
const QList<CategoryStats> &RavelinthViewModel::categoryStats() const {
    return d->categoryStats->stats();
}
SortOption RavelinthViewModel::sortOption() const {
    return d->fileList->sortOption();
}
void RavelinthViewModel::setSortOption(SortOption option) {
    d->fileList->setSortOption(option);
}
std::optional<ScanCategory> RavelinthViewModel::categoryFilter() const {
    return d->fileList->categoryFilter();
}
void RavelinthViewModel::setCategoryFilter(std::optional<ScanCategory> category) {
    d->fileList->setCategoryFilter(category);
}
QString RavelinthViewModel::scanPath() const {
    return d->scan->path();
}
void RavelinthViewModel::setScanPath(const QString &path) {
    d->scan->setPath(path);
}
double RavelinthViewModel::minFileSizeMB() const {
    return d->scan->minFileSizeMB();
}
void RavelinthViewModel::setMinFileSizeMB(double megabytes) {
    d->scan->setMinFileSizeMB(megabytes);
}
QString RavelinthViewModel::searchText() const {
    return d->fileList->searchText();
}
void RavelinthViewModel::setSearchText(const QString &text) {
    d->fileList->setSearchText(text);
}
bool RavelinthViewModel::includeHiddenFiles() const {
    return d->scan->includeHiddenFiles();
}
void RavelinthViewModel::setIncludeHiddenFiles(bool include) {
    d->scan->setIncludeHiddenFiles(include);
}
bool RavelinthViewModel::isScanning() const {
    return d->scan->isScanning();
}
int RavelinthViewModel::fileCount() const {
    return d->fileList->fileCount();
}
int RavelinthViewModel::selectedCount() const {
    return d->selection->count();
}
int RavelinthViewModel::displayedCount() const {
    return d->fileList->count();
}

QList<FileItem> RavelinthViewModel::displayedFiles() const {
    QList<FileItem> shown;
    const QList<FileItem> &files = d->fileList->files();
    for (int index : d->fileList->currentQueryIndices())
        shown.append(files[index]);
    return shown;
}
QList<FileItem> RavelinthViewModel::selectedFileItems() const {
    return d->operations->selectedFiles();
}
qint64 RavelinthViewModel::totalScannedSize() const {
    return d->fileList->totals().totalSize;
}
qint64 RavelinthViewModel::potentialSavings() const {
    return d->fileList->totals().savings;
}
int RavelinthViewModel::potentialSavingsFileCount() const {
    return d->fileList->totals().savingsCount;
}

// --- operations ---

void RavelinthViewModel::loadDiskInfo() {
    d->disk->refresh();
}
void RavelinthViewModel::startScan() {
    d->scan->start();
}
void RavelinthViewModel::stopScan() {
    d->scan->stop();
}
void RavelinthViewModel::browsePath() {
    d->scan->browse();
}
void RavelinthViewModel::selectAll() {
    d->selection->selectAll();
}
void RavelinthViewModel::moveSelectedToTrash() {
    d->operations->moveSelectedToTrash();
}
void RavelinthViewModel::moveToTrash(const FileItem &file) {
    d->operations->moveToTrash(file);
}
void RavelinthViewModel::revealSelectedInFinder() {
    d->operations->revealSelected();
}

} // namespace ravelinth
