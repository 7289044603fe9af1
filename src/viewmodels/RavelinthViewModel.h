#pragma once

#include "models/DiskInfo.h"
#include "models/FileItem.h"
#include "models/ScanResult.h"
#include "models/ScanState.h"
#include "viewmodels/DisplayedFilesModel.h"
#include "viewmodels/SortOption.h"

#include <QAbstractItemModel>
#include <QFuture>
#include <QObject>
#include <QSet>
#include <QUuid>
#include <QVariant>

#include <optional>

namespace ravelinth {

class DiskInfoService;
class FileScannerService;
class TrashService;

// The whole state of the program, on the main thread. Services do their work on their own
// threads and hand results back here; every write below happens on the main thread.
//
// C++ callers use the typed accessors; QML reads the Q_PROPERTYs, which present the same state
// as plain values (maps, lists, strings, numbers).
class RavelinthViewModel : public QObject {
    Q_OBJECT

    // --- published state ---
    // null, or {name, mountPoint, totalBytes, usedBytes, freeBytes, usagePercent}
    Q_PROPERTY(QVariant diskInfo READ diskInfoForQml NOTIFY diskInfoChanged)
    // {kind: "idle"|"scanning"|"completed"|"error"|"cancelled", statusMessage, and the payload:
    //  path, filesScanned, bytesScanned, currentFile | filesFound, totalSize, duration | message}
    Q_PROPERTY(QVariantMap scanState READ scanStateForQml NOTIFY scanStateChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY scanStateChanged)
    Q_PROPERTY(int fileCount READ fileCount NOTIFY filesChanged)
    Q_PROPERTY(int selectedCount READ selectedCount NOTIFY selectedFilesChanged)
    // [{category (display name), icon, color ("#AARRGGBB"), fileCount, totalSize}], largest first
    Q_PROPERTY(QVariantList categoryStats READ categoryStatsForQml NOTIFY categoryStatsChanged)
    Q_PROPERTY(QString scanPath READ scanPath WRITE setScanPath NOTIFY scanPathChanged)
    Q_PROPERTY(
        double minFileSizeMB READ minFileSizeMB WRITE setMinFileSizeMB NOTIFY minFileSizeMBChanged)
    Q_PROPERTY(
        int sortOption READ sortOptionForQml WRITE setSortOptionForQml NOTIFY sortOptionChanged)
    // "" when no filter is set, else a category's display name
    Q_PROPERTY(QString categoryFilter READ categoryFilterForQml WRITE setCategoryFilterForQml NOTIFY
                   categoryFilterChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(bool showSettings READ showSettings WRITE setShowSettings NOTIFY showSettingsChanged)
    // "" when there is no message; writing "" clears it (the alert's "OK")
    Q_PROPERTY(QString errorMessage READ errorMessageForQml WRITE setErrorMessageForQml NOTIFY
                   errorMessageChanged)
    Q_PROPERTY(bool includeHiddenFiles READ includeHiddenFiles WRITE setIncludeHiddenFiles NOTIFY
                   includeHiddenFilesChanged)

    // --- derived ---
    // The table of displayedFiles; roles listed on DisplayedFilesModel.
    Q_PROPERTY(QAbstractItemModel *displayedFiles READ displayedFilesModel CONSTANT)
    Q_PROPERTY(int displayedCount READ displayedCount NOTIFY displayedFilesChanged)
    Q_PROPERTY(double totalScannedSize READ totalScannedSizeForQml NOTIFY totalsChanged)
    Q_PROPERTY(double potentialSavings READ potentialSavingsForQml NOTIFY totalsChanged)
    Q_PROPERTY(
        int potentialSavingsFileCount READ potentialSavingsFileCountForQml NOTIFY totalsChanged)
    Q_PROPERTY(QStringList sortOptionNames READ sortOptionNames CONSTANT)

public:
    explicit RavelinthViewModel(QObject *parent = nullptr);
    ~RavelinthViewModel() override;

    // Typed state for C++.
    const std::optional<DiskInfo> &diskInfo() const;
    const ScanState &scanState() const;
    const QList<FileItem> &files() const;
    const QSet<QUuid> &selectedFiles() const;
    void setSelectedFiles(QSet<QUuid> selection);
    const QList<CategoryStats> &categoryStats() const;
    SortOption sortOption() const;
    void setSortOption(SortOption option);
    std::optional<ScanCategory> categoryFilter() const;
    void setCategoryFilter(std::optional<ScanCategory> category);
    const std::optional<QString> &errorMessage() const;
    void setErrorMessage(std::optional<QString> message);

    // The derived queries, equal on every read to what they are defined as.
    QList<FileItem> displayedFiles() const;
    QList<FileItem> selectedFileItems() const;
    qint64 totalScannedSize() const;
    qint64 potentialSavings() const;

    QString scanPath() const;
    void setScanPath(const QString &path);
    double minFileSizeMB() const;
    void setMinFileSizeMB(double megabytes);
    QString searchText() const;
    void setSearchText(const QString &text);
    bool showSettings() const;
    void setShowSettings(bool show);
    bool includeHiddenFiles() const;
    void setIncludeHiddenFiles(bool include);

    bool isScanning() const;
    int fileCount() const;
    int selectedCount() const;
    int displayedCount() const;
    int potentialSavingsFileCount() const;
    QAbstractItemModel *displayedFilesModel() const;

    // Operations (all return at once; results arrive through the properties).
    Q_INVOKABLE void loadDiskInfo();
    Q_INVOKABLE void startScan();
    Q_INVOKABLE void stopScan();
    Q_INVOKABLE void browsePath();
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void moveSelectedToTrash();
    void moveToTrash(const FileItem &file);
    Q_INVOKABLE void revealSelectedInFinder();

    // Helpers for the table (rows are rows of displayedFiles).
    Q_INVOKABLE void clearSelection();
    Q_INVOKABLE void selectOnly(int row);
    Q_INVOKABLE void toggleSelected(int row);
    Q_INVOKABLE void selectRange(int fromRow, int toRow); // adds the rows between, inclusive
    Q_INVOKABLE bool isRowSelected(int row) const;
    Q_INVOKABLE QString fileIdAt(int row) const;
    // The context menu: the files its click concerns (the selection when the clicked row is
    // selected, else that row alone), as ids in list order.
    Q_INVOKABLE QStringList clickedSet(int row) const;
    Q_INVOKABLE void moveFileToTrash(const QString &fileId);
    Q_INVOKABLE QStringList pathsOf(const QStringList &fileIds) const; // display paths

    Q_INVOKABLE QString formatByteCount(double bytes) const;
    // A modification time (milliseconds since the epoch) in words relative to now: "2 days ago".
    Q_INVOKABLE QString formatRelativeDate(double msecsSinceEpoch) const;
    Q_INVOKABLE QString sortOptionName(int option) const;

    QStringList sortOptionNames() const;

signals:
    void diskInfoChanged();
    void scanStateChanged();
    void filesChanged();
    void selectedFilesChanged();
    void categoryStatsChanged();
    void scanPathChanged();
    void minFileSizeMBChanged();
    void sortOptionChanged();
    void categoryFilterChanged();
    void searchTextChanged();
    void showSettingsChanged();
    void errorMessageChanged();
    void includeHiddenFilesChanged();
    void displayedFilesChanged();
    // The three totals of the files; after a change of a long list they follow a moment later.
    void totalsChanged();

private:
    void setScanState(ScanState state);
    void setProgressState(ScanState state);
    void setFiles(QList<FileItem> files);
    void setCategoryStats(QList<CategoryStats> stats);
    void updateCategoryStats();
    void requestDisplayedFiles();
    void computeOrders();
    void selectionChanged();
    int fileIndexOfRow(int row) const;
    QFuture<void> refreshDiskInfo();
    QVariant diskInfoForQml() const;
    QVariantMap scanStateForQml() const;
    QVariantList categoryStatsForQml() const;
    int sortOptionForQml() const;
    void setSortOptionForQml(int option);
    QString categoryFilterForQml() const;
    void setCategoryFilterForQml(const QString &category);
    QString errorMessageForQml() const;
    void setErrorMessageForQml(const QString &message);
    double totalScannedSizeForQml() const;
    double potentialSavingsForQml() const;
    int potentialSavingsFileCountForQml() const;

    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ravelinth
