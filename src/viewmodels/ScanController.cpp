#include "viewmodels/ScanController.h"

#include "models/PathText.h"
#include "services/FileScannerService.h"
#include "services/FinderService.h"
#include "utility/WhenFinished.h"
#include "viewmodels/ScanThreshold.h"

#include <QDir>
#include <QFile>
#include <QPointer>

namespace ravelinth {

// The handle of one scan: cancelling it marks it, and a scan that fails after that ends as
// cancelled instead of as an error.
struct ScanController::Task {
    bool isCancelled = false;
};

ScanController::ScanController(QObject *parent) : QObject(parent), m_path(QDir::homePath()) {}

ScanController::~ScanController() {
    if (m_scanner)
        m_scanner->cancel();
}

void ScanController::setPath(const QString &path) {
    if (m_path == path)
        return;
    m_path = path;
    emit pathChanged();
}

void ScanController::setMinFileSizeMB(double megabytes) {
    if (m_minFileSizeMB == megabytes)
        return;
    m_minFileSizeMB = megabytes;
    emit minFileSizeMBChanged();
}

void ScanController::setIncludeHiddenFiles(bool include) {
    if (m_includeHiddenFiles == include)
        return;
    m_includeHiddenFiles = include;
    emit includeHiddenFilesChanged();
}

void ScanController::setState(ScanState state) {
    m_state = std::move(state);
    emit stateChanged();
}

// Progress comes in batches, a report each; the window redraws once per batch anyway, and each
// announcement re-evaluates every binding on the state. So the state follows each report at
// once, and one announcement follows the batch.
void ScanController::setProgressState(ScanState state) {
    m_state = std::move(state);
    if (std::exchange(m_progressAnnouncementPending, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_progressAnnouncementPending = false;
            emit stateChanged();
        },
        Qt::QueuedConnection);
}

void ScanController::start() {
    if (m_state.isScanning())
        return;
    if (m_task)
        m_task->isCancelled = true;
    if (m_scanner)
        m_scanner->cancel();
    emit starting();

    auto scanner = std::make_shared<FileScannerService>();
    scanner->setYieldsToInterface(true);
    m_scanner = scanner;
    setState(ScanState::scanning(m_path, 0, 0, {}));
    auto task = std::make_shared<Task>();
    m_task = task;
    // The task begins on a later turn of the main loop and reads the settings only then.
    QMetaObject::invokeMethod(
        this, [this, scanner, task] { begin(scanner, task); }, Qt::QueuedConnection);
}

void ScanController::begin(std::shared_ptr<FileScannerService> scanner,
                           std::shared_ptr<Task> task) {
    ScanConfiguration configuration;
    configuration.minFileSizeBytes = thresholdBytes(m_minFileSizeMB);
    configuration.includeHiddenFiles = m_includeHiddenFiles;
    configuration.skipSystemDirectories = m_skipSystemDirectories;
    configuration.followSymlinks = false;
    configuration.exclusions = m_exclusions;
    configuration.stayOnOneFileSystem = m_stayOnOneFileSystem;
    configuration.scanNetworkDrives = m_scanNetworkDrives;
    QPointer<ScanController> self(this);
    auto progress = [self, task](qint64 files, qint64 bytes, const QString &current) {
        if (self && self->m_task == task)
            self->setProgressState(ScanState::scanning(self->m_path, files, bytes, current));
    };
    QFuture<ScanOutcome> scan =
        scanner->scan(QFile::encodeName(m_path), configuration, std::move(progress));
    // A task cancelled before it began still runs, but stops at its first report.
    if (task->isCancelled)
        scanner->cancel();
    const ResultScope scope{QFile::encodeName(m_path), configuration.minFileSizeBytes,
                            configuration.includeHiddenFiles, configuration.exclusions};
    whenFinished(scan, this, [this, scanner, task, scope](const ScanOutcome &outcome) {
        // A stopped scan may still show what it found, but only until another scan starts: a
        // late partial list must not replace a newer scan's results.
        if (task != m_task)
            return;
        if (outcome) {
            const ScanResult &result = *outcome;
            m_resultScope = scope;
            emit finished(result);
            setState(ScanState::completed(result.files.size(), result.totalSize, result.duration));
        } else if (task->isCancelled) {
            setState(ScanState::cancelled());
        } else {
            const QString message = outcome.error().description();
            setState(ScanState::error(message));
            emit failed(message);
        }
    });
}

void ScanController::stop() {
    if (m_task)
        m_task->isCancelled = true;
    // The scanner is looked up when this runs, not now.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_scanner)
                m_scanner->cancel();
        },
        Qt::QueuedConnection);
    setState(ScanState::cancelled());
}

bool ScanController::resultWouldKeep(const QByteArray &path, qint64 size) const {
    if (!m_resultScope || size < m_resultScope->minFileSizeBytes)
        return false;
    const QByteArray root = withoutTrailingSlashes(m_resultScope->root);
    const QByteArray prefix = root == "/" ? root : root + '/';
    if (!path.startsWith(prefix))
        return false;
    for (const QByteArray &folder : m_resultScope->exclusions.folders) {
        if (path.startsWith(folder + '/'))
            return false;
    }
    if (ExclusionPatterns(m_resultScope->exclusions.patterns, root).excludesOnTheWay(path))
        return false;
    if (m_resultScope->includeHiddenFiles)
        return true;
    // A name below the root that starts with a dot is hidden, and so is all under it.
    return !path.mid(prefix.size()).startsWith('.') && !path.mid(prefix.size()).contains("/.");
}

void ScanController::reset() {
    if (m_task)
        m_task->isCancelled = true;
    m_task.reset();
    if (m_scanner)
        m_scanner->cancel();
    m_resultScope.reset();
    emit cleared();
    setState(ScanState::idle());
}

void ScanController::browse() {
    whenFinished(FinderService::shared().selectFolder(u"Select Folder to Scan"_qs, m_path), this,
                 [this](const std::optional<QString> &path) {
                     if (path)
                         setPath(*path);
                 });
}

} // namespace ravelinth
