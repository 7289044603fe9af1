#pragma once

#include "models/CategoryStats.h"
#include "models/DiskInfo.h"
#include "models/FileItem.h"
#include "models/ScanState.h"
#include "models/SortOption.h"

#include <QObject>
#include <QSet>
#include <QUuid>

#include <memory>
#include <optional>

namespace ravelinth {

class CategoryStatsModel;
class DiskInfoController;
class FileListModel;
class FileOperations;
class MoveUndo;
class Preferences;
class ScanController;
class ScanGaps;
class SelectionController;
class TrashService;

// The whole state of the program, on the main thread, one per process. It owns one part per
// concern (the scan, the disk, the file list, the selection, the file operations, the category
// statistics) and wires them together; the window reaches each part through its property. Only
// the window's own flags live here: whether the settings are shown, and the error on screen.
//
// The typed accessors below are the same state for C++ callers, under the names the rest of the
// program uses for it.
class RavelinthViewModel : public QObject {
    Q_OBJECT
    Q_MOC_INCLUDE("viewmodels/CategoryStatsModel.h")
    Q_MOC_INCLUDE("viewmodels/DiskInfoController.h")
    Q_MOC_INCLUDE("viewmodels/FileListModel.h")
    Q_MOC_INCLUDE("viewmodels/FileOperations.h")
    Q_MOC_INCLUDE("viewmodels/MoveUndo.h")
    Q_MOC_INCLUDE("viewmodels/Preferences.h")
    Q_MOC_INCLUDE("viewmodels/ScanController.h")
    Q_MOC_INCLUDE("viewmodels/ScanGaps.h")
    Q_MOC_INCLUDE("viewmodels/SelectionController.h")
    Q_PROPERTY(ravelinth::ScanController *scan READ scan CONSTANT)
    Q_PROPERTY(ravelinth::DiskInfoController *disk READ disk CONSTANT)
    Q_PROPERTY(ravelinth::FileListModel *fileList READ fileList CONSTANT)
    Q_PROPERTY(ravelinth::SelectionController *selection READ selection CONSTANT)
    Q_PROPERTY(ravelinth::FileOperations *operations READ operations CONSTANT)
    Q_PROPERTY(ravelinth::MoveUndo *undo READ undo CONSTANT)
    Q_PROPERTY(ravelinth::CategoryStatsModel *categoryStats READ categoryStatsModel CONSTANT)
    Q_PROPERTY(ravelinth::ScanGaps *gaps READ gaps CONSTANT)
    Q_PROPERTY(ravelinth::Preferences *preferences READ preferences CONSTANT)
    Q_PROPERTY(bool showSettings READ showSettings WRITE setShowSettings NOTIFY showSettingsChanged)
    // "" when there is no message; writing "" clears it (the alert's "OK")
    Q_PROPERTY(QString errorMessage READ errorMessageText WRITE setErrorMessageText NOTIFY
                   errorMessageChanged)

public:
    explicit RavelinthViewModel(QObject *parent = nullptr);
    ~RavelinthViewModel() override;

    ScanController *scan() const;
    DiskInfoController *disk() const;
    FileListModel *fileList() const;
    SelectionController *selection() const;
    FileOperations *operations() const;
    MoveUndo *undo() const;
    CategoryStatsModel *categoryStatsModel() const;
    ScanGaps *gaps() const;
    Preferences *preferences() const;

    bool showSettings() const;
    void setShowSettings(bool show);
    const std::optional<QString> &errorMessage() const;
    void setErrorMessage(std::optional<QString> message);

    // --- the same state, typed, for C++ ---
    const std::optional<DiskInfo> &diskInfo() const;
    const ScanState &scanState() const;
    const QList<FileItem> &files() const;
    const QSet<QUuid> &selectedFiles() const;
    void setSelectedFiles(const QSet<QUuid> &selection);
    const QList<CategoryStats> &categoryStats() const;
    SortOption sortOption() const;
    void setSortOption(SortOption option);
    std::optional<ScanCategory> categoryFilter() const;
    void setCategoryFilter(std::optional<ScanCategory> category);
    QString scanPath() const;
    void setScanPath(const QString &path);
    double minFileSizeMB() const;
    void setMinFileSizeMB(double megabytes);
    QString searchText() const;
    void setSearchText(const QString &text);
    bool includeHiddenFiles() const;
    void setIncludeHiddenFiles(bool include);
    bool isScanning() const;
    int fileCount() const;
    int selectedCount() const;
    int displayedCount() const;

    // The derived queries, equal on every read to what they are defined as.
    QList<FileItem> displayedFiles() const;
    QList<FileItem> selectedFileItems() const;
    qint64 totalScannedSize() const;
    qint64 potentialSavings() const;
    int potentialSavingsFileCount() const;

    // Operations: each returns at once; results arrive through the parts' properties.
    void loadDiskInfo();
    void startScan();
    void stopScan();
    void browsePath();
    void selectAll();
    void moveSelectedToTrash();
    void moveToTrash(const FileItem &file);
    void revealSelectedInFinder();

signals:
    void showSettingsChanged();
    void errorMessageChanged();

private:
    QString errorMessageText() const;
    void setErrorMessageText(const QString &message);
    void refreshAfterMove();

    struct Parts;
    std::unique_ptr<Parts> d;
};

} // namespace ravelinth
