#pragma once

#include "models/ByteCountFormatter.h"
#include "models/FileItem.h"
#include "models/FileTotals.h"
#include "models/SortOption.h"
#include "services/FileListQueryService.h"
#include "viewmodels/FileSelection.h"

#include <QAbstractTableModel>
#include <QList>

#include <atomic>
#include <memory>
#include <optional>

namespace ravelinth {

// The kept files and the table that shows them: one row per displayed file, six columns (icon,
// name, size, category, modified, status); every role answers on every column so a cell can draw
// from any of them. Sort option, category filter and search text shape the rows. Each change asks
// the query service for new rows and counts one generation; only the answer to the latest
// generation is published, whole, so a keystroke never makes the table re-read a half-built list.
//
// The selection is one flag per kept file and follows its files into each new list.
class FileListModel : public QAbstractTableModel {
    Q_OBJECT
    Q_PROPERTY(
        int sortOption READ sortOptionValue WRITE setSortOptionValue NOTIFY sortOptionChanged)
    Q_PROPERTY(QStringList sortOptionNames READ sortOptionNames CONSTANT)
    Q_PROPERTY(int sortColumn READ sortColumn NOTIFY sortOptionChanged)
    Q_PROPERTY(bool sortAscending READ sortAscending NOTIFY sortOptionChanged)
    // A ScanCategory value, or -1 when every category is shown.
    Q_PROPERTY(int categoryFilter READ categoryFilterValue WRITE setCategoryFilterValue NOTIFY
                   categoryFilterChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int fileCount READ fileCount NOTIFY filesChanged)
    // Zero for a long list until summed beside the queries: summing a million paths would hold
    // up a frame.
    Q_PROPERTY(double totalScannedSize READ shownTotalSize NOTIFY totalsChanged)
    Q_PROPERTY(double potentialSavings READ shownSavings NOTIFY totalsChanged)
    Q_PROPERTY(int potentialSavingsFileCount READ shownSavingsCount NOTIFY totalsChanged)

public:
    enum Role {
        FileIdRole = Qt::UserRole + 1,
        NameRole,
        PathRole,
        FolderRole,
        SizeRole,
        SizeTextRole,
        ExtensionRole,
        CategoryRole,
        CategoryNameRole,
        CategoryIconRole,
        CategoryColorRole,
        ModifiedMSecsRole,
        IsSafeToDeleteRole,
        IsDefinitelySafeRole,
        SelectedRole,
        IsLinkedRole, // the file's data has other names
    };
    enum Column {
        IconColumn,
        NameColumn,
        SizeColumn,
        CategoryColumn,
        ModifiedColumn,
        StatusColumn
    };
    static constexpr int columnCountValue = 6;

    explicit FileListModel(QObject *parent = nullptr);
    ~FileListModel() override;

    // --- the kept files ---
    const QList<FileItem> &files() const { return m_files; }
    void setFiles(QList<FileItem> files);
    // Puts files into the list at their place by size (largest first); a path already listed is
    // not listed twice.
    void addFiles(const QList<FileItem> &files);
    // Drops the files whose path is in `paths`; returns how many went.
    qsizetype removePaths(const QSet<QByteArray> &paths);
    int fileCount() const { return int(m_files.size()); }
    // Exact sums, worked out now if the background has not yet.
    const FileTotals &totals() const;

    // --- what is shown ---
    SortOption sortOption() const { return m_query.sortOption; }
    void setSortOption(SortOption option);
    std::optional<ScanCategory> categoryFilter() const { return m_query.categoryFilter; }
    void setCategoryFilter(std::optional<ScanCategory> category);
    QString searchText() const { return m_query.searchText; }
    void setSearchText(const QString &text);
    Q_INVOKABLE void sortByColumn(int column);
    int sortColumn() const;
    bool sortAscending() const;
    QStringList sortOptionNames() const;

    // The files the query keeps, in its order, worked out now: equal on every read to what is
    // displayed once the latest answer is published.
    QList<int> currentQueryIndices() const;
    int count() const { return int(m_rows.size()); }
    // What the table shows: shownRows() index shownFiles(), in the displayed order. Both are
    // shared lists, so keeping the pair is a cheap snapshot of the rows as displayed.
    const QList<FileItem> &shownFiles() const { return m_shownFiles; }
    const QList<int> &shownRows() const { return m_rows; }
    const FileItem *fileAt(int row) const;
    // The row's index into files(), also while the table still shows an older list; -1 if none.
    int fileIndexOfRow(int row) const;
    Q_INVOKABLE QString fileIdAt(int row) const;
    // What a quick look at the row shows: name, path, folder, sizeText, category, modifiedMSecs,
    // isImage (by category) and url (a file URL, for decoding the image). Empty for no row.
    Q_INVOKABLE QVariantMap detailsAt(int row) const;

    // --- the selection ---
    const FileSelection &selection() const { return m_selection; }
    FileSelection &editSelection() { return m_selection; }
    // To be called after every edit of the selection.
    void selectionEdited();

    // --- the table ---
    // The units of the size texts; a change rewrites every row's size.
    void setByteUnits(ByteUnits units);
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

signals:
    void filesChanged();
    void sortOptionChanged();
    void categoryFilterChanged();
    void searchTextChanged();
    void countChanged();
    void totalsChanged();
    void selectionChanged();
    // The rows now show the same files in another order (no reset): what a row was is gone.
    void rowsReordered();
    // A query's rows were published.
    void rowsPublished();

private:
    void requestRows();
    void prepareOrders();
    void publish(QList<FileItem> files, QList<int> rows);
    int sortOptionValue() const { return int(SortOption::Value(m_query.sortOption)); }
    void setSortOptionValue(int option);
    int categoryFilterValue() const;
    void setCategoryFilterValue(int category);
    FileTotals shownTotals() const { return m_totals.value_or(FileTotals{}); }
    double shownTotalSize() const { return double(shownTotals().totalSize); }
    double shownSavings() const { return double(shownTotals().savings); }
    int shownSavingsCount() const { return shownTotals().savingsCount; }

    QList<FileItem> m_files;
    ByteUnits m_byteUnits = ByteUnits::decimal;
    FileSelection m_selection;
    FileListQuery m_query;
    mutable std::optional<FileTotals> m_totals;

    // What the table shows: rows index m_shownFiles, which is m_files itself once the answer to
    // the latest question is in.
    QList<FileItem> m_shownFiles;
    QList<int> m_rows;

    FileListQueryService m_queries;
    FileListQueryService::Preparation m_preparation;
    SharedOrders m_orders; // the best known for m_files, or none
    // The one generation counter: every change of the files or the query counts one. Shared with
    // the query thread so a question already overtaken is skipped there.
    std::shared_ptr<std::atomic<quint64>> m_latest = std::make_shared<std::atomic<quint64>>(0);
    quint64 m_published = 0;
};

} // namespace ravelinth
