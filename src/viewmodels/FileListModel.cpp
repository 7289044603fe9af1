#include "viewmodels/FileListModel.h"

#include "models/ByteCountFormatter.h"
#include "utility/BackgroundRelease.h"
#include "utility/WhenFinished.h"

#include <QSet>
#include <QUrl>

#include <algorithm>

namespace ravelinth {

namespace {

// A list at least this long has its totals summed beside the queries rather than at once.
constexpr qsizetype summedBesideFrom = 20000;

// The column each order sorts on, and whether it runs upward; in SortOption order.
struct ColumnOrder {
    int column;
    bool ascending;
};
constexpr std::array<ColumnOrder, SortOption::count> columnOrders{{
    {FileListModel::SizeColumn, false},
    {FileListModel::SizeColumn, true},
    {FileListModel::NameColumn, true},
    {FileListModel::NameColumn, false},
    {FileListModel::ModifiedColumn, false},
    {FileListModel::ModifiedColumn, true},
}};

bool sameList(const QList<FileItem> &a, const QList<FileItem> &b) {
    return a.constData() == b.constData() && a.size() == b.size();
}

} // namespace

FileListModel::FileListModel(QObject *parent) : QAbstractTableModel(parent) {}

FileListModel::~FileListModel() {
    m_queries.waitForDone();
}

void FileListModel::setFiles(QList<FileItem> files) {
    // The selection follows the files it names into the new list.
    const QSet<QUuid> selected =
        m_selection.count() > 0 ? m_selection.identifiers(m_files) : QSet<QUuid>();
    std::swap(m_files, files);
    releaseInBackground(std::move(files));
    m_selection.assign(0, m_files, selected);
    m_totals.reset();
    prepareOrders();
    emit filesChanged();
    // A short list is summed at once; a long one beside the queries.
    if (m_files.size() < summedBesideFrom) {
        totals();
        emit totalsChanged();
    }
    if (!selected.isEmpty())
        emit selectionChanged();
    requestRows();
}

void FileListModel::addFiles(const QList<FileItem> &added) {
    QSet<QByteArray> listed;
    for (const FileItem &file : m_files)
        listed.insert(file.path);
    QList<FileItem> files = m_files;
    const auto largerFirst = [](const FileItem &a, const FileItem &b) { return a.size > b.size; };
    for (const FileItem &file : added) {
        if (listed.contains(file.path))
            continue;
        listed.insert(file.path);
        files.insert(std::upper_bound(files.cbegin(), files.cend(), file, largerFirst), file);
    }
    if (files.size() != m_files.size())
        setFiles(std::move(files));
}

qsizetype FileListModel::removePaths(const QSet<QByteArray> &paths) {
    if (paths.isEmpty())
        return 0;
    QList<FileItem> remaining;
    remaining.reserve(m_files.size());
    for (const FileItem &file : std::as_const(m_files)) {
        if (!paths.contains(file.path))
            remaining.append(file);
    }
    const qsizetype removed = m_files.size() - remaining.size();
    if (removed > 0)
        setFiles(std::move(remaining));
    return removed;
}

const FileTotals &FileListModel::totals() const {
    if (!m_totals)
        m_totals = sumFileTotals(m_files);
    return *m_totals;
}

void FileListModel::prepareOrders() {
    const QList<FileItem> files = m_files;
    m_orders.reset();
    m_preparation = m_queries.prepare(files, files.size() >= summedBesideFrom);
    const auto keep = [this, files](const SharedOrders &orders) {
        if (!sameList(files, m_files))
            return;
        if (!m_orders || m_orders->byName.size() < orders->byName.size())
            m_orders = orders;
        // The full orders serve every query from now on; the first copy can go.
        if (m_orders->hasNames())
            m_preparation.baseOrders = m_preparation.namedOrders;
    };
    whenFinished(m_preparation.baseOrders, this, keep);
    whenFinished(m_preparation.namedOrders, this, keep);
    if (files.size() >= summedBesideFrom) {
        whenFinished(m_preparation.totals, this, [this, files](const FileTotals &sums) {
            if (!sameList(files, m_files))
                return;
            m_totals = sums;
            emit totalsChanged();
        });
    }
}

void FileListModel::requestRows() {
    const quint64 generation = ++*m_latest;
    const QList<FileItem> files = m_files;
    const bool byName = m_query.sortOption == SortOption::nameAscending ||
                        m_query.sortOption == SortOption::nameDescending;
    const QFuture<SharedOrders> orders =
        byName ? m_preparation.namedOrders : m_preparation.baseOrders;
    whenFinished(m_queries.query(files, m_query, orders, m_latest, generation), this,
                 [this, files, generation](std::optional<QList<int>> rows) {
                     if (!rows || generation != *m_latest)
                         return;
                     m_published = generation;
                     publish(files, std::move(*rows));
                 });
}

void FileListModel::publish(QList<FileItem> files, QList<int> rows) {
    // The same files in as many rows, as after a change of order: the table keeps its cells and
    // they read their rows again, which costs a fraction of a reset's new cells in the frame.
    if (!rows.isEmpty() && rows.size() == m_rows.size() && sameList(files, m_shownFiles)) {
        m_rows = std::move(rows);
        emit dataChanged(index(0, 0), index(count() - 1, columnCountValue - 1));
        emit rowsReordered();
        emit rowsPublished();
        return;
    }
    const int before = count();
    beginResetModel();
    std::swap(m_shownFiles, files);
    m_rows = std::move(rows);
    endResetModel();
    releaseInBackground(std::move(files));
    if (count() != before)
        emit countChanged();
    emit rowsPublished();
}

QList<int> FileListModel::currentQueryIndices() const {
    if (m_published == *m_latest && sameList(m_shownFiles, m_files))
        return m_rows;
    return m_orders ? queryFileList(m_files, m_query, *m_orders) : queryFileList(m_files, m_query);
}

// --- the query ---

void FileListModel::setSortOption(SortOption option) {
    if (m_query.sortOption == option)
        return;
    m_query.sortOption = option;
    emit sortOptionChanged();
    requestRows();
}

void FileListModel::setCategoryFilter(std::optional<ScanCategory> category) {
    if (m_query.categoryFilter == category)
        return;
    m_query.categoryFilter = category;
    emit categoryFilterChanged();
    requestRows();
}

void FileListModel::setSearchText(const QString &text) {
    if (m_query.searchText == text)
        return;
    m_query.searchText = text;
    emit searchTextChanged();
    requestRows();
}

void FileListModel::sortByColumn(int column) {
    const ColumnOrder current = columnOrders[size_t(SortOption::Value(m_query.sortOption))];
    // The column already sorted on turns around; another starts upward (smallest, A to Z, oldest).
    const bool ascending = column == current.column ? !current.ascending : true;
    for (size_t option = 0; option < columnOrders.size(); ++option) {
        if (columnOrders[option].column == column && columnOrders[option].ascending == ascending) {
            setSortOption(SortOption::allCases()[option]);
            return;
        }
    }
}

int FileListModel::sortColumn() const {
    return columnOrders[size_t(SortOption::Value(m_query.sortOption))].column;
}

bool FileListModel::sortAscending() const {
    return columnOrders[size_t(SortOption::Value(m_query.sortOption))].ascending;
}

QStringList FileListModel::sortOptionNames() const {
    QStringList names;
    for (SortOption option : SortOption::allCases())
        names.append(option.rawValue());
    return names;
}

void FileListModel::setSortOptionValue(int option) {
    if (option >= 0 && option < SortOption::count)
        setSortOption(SortOption::allCases()[size_t(option)]);
}

int FileListModel::categoryFilterValue() const {
    return m_query.categoryFilter ? m_query.categoryFilter->index() : -1;
}

void FileListModel::setCategoryFilterValue(int category) {
    if (category >= 0 && category < ScanCategory::count)
        setCategoryFilter(ScanCategory::allCases()[size_t(category)]);
    else
        setCategoryFilter(std::nullopt);
}

// --- rows and the selection ---

const FileItem *FileListModel::fileAt(int row) const {
    if (row < 0 || row >= m_rows.size())
        return nullptr;
    return &m_shownFiles[m_rows[row]];
}

int FileListModel::fileIndexOfRow(int row) const {
    const FileItem *file = fileAt(row);
    if (!file)
        return -1;
    if (sameList(m_shownFiles, m_files))
        return m_rows[row];
    // The table still shows the list before the last change: find the row's file by identity.
    for (qsizetype i = 0; i < m_files.size(); ++i) {
        if (m_files[i].id == file->id)
            return int(i);
    }
    return -1;
}

QString FileListModel::fileIdAt(int row) const {
    const FileItem *file = fileAt(row);
    return file ? file->id.toString(QUuid::WithoutBraces) : QString();
}

QVariantMap FileListModel::detailsAt(int row) const {
    const FileItem *file = fileAt(row);
    if (!file)
        return {};
    return {{u"name"_qs, file->displayName()},
            {u"path"_qs, file->displayPath()},
            {u"folder"_qs, file->displayParentPath()},
            {u"sizeText"_qs, formatByteCount(file->size, m_byteUnits)},
            {u"category"_qs, file->category.rawValue()},
            {u"modifiedMSecs"_qs, double(file->modifiedMSecs)},
            {u"isImage"_qs, file->category == ScanCategory::image},
            {u"url"_qs, QUrl::fromLocalFile(file->displayPath())}};
}

void FileListModel::selectionEdited() {
    if (!m_rows.isEmpty())
        emit dataChanged(index(0, 0), index(count() - 1, columnCountValue - 1), {SelectedRole});
    emit selectionChanged();
}

// --- the table ---

int FileListModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : count();
}

int FileListModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : columnCountValue;
}

QVariant FileListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QStringList titles{QString(),      u"Name"_qs,     u"Size"_qs,
                                    u"Category"_qs, u"Modified"_qs, u"Status"_qs};
    return titles.value(section);
}

void FileListModel::setByteUnits(ByteUnits units) {
    if (units == m_byteUnits)
        return;
    m_byteUnits = units;
    if (!m_rows.isEmpty())
        emit dataChanged(index(0, SizeColumn), index(int(m_rows.size()) - 1, SizeColumn),
                         {Qt::DisplayRole, SizeTextRole});
}

QVariant FileListModel::data(const QModelIndex &index, int role) const {
    const FileItem *file = fileAt(index.row());
    if (!file || index.column() < 0 || index.column() >= columnCountValue)
        return {};
    if (role == Qt::DisplayRole) {
        switch (index.column()) {
        case IconColumn:
            return file->category.icon();
        case SizeColumn:
            return formatByteCount(file->size, m_byteUnits);
        case CategoryColumn:
            return file->category.rawValue();
        case ModifiedColumn:
            return file->modifiedDate();
        case StatusColumn:
            return file->isSafeToDelete() ? u"Safe"_qs : u"Review"_qs;
        default:
            return file->displayName();
        }
    }
    switch (role) {
    case NameRole:
        return file->displayName();
    case FileIdRole:
        return file->id.toString(QUuid::WithoutBraces);
    case PathRole:
        return file->displayPath();
    case FolderRole:
        return file->displayParentPath();
    case SizeRole:
        return double(file->size);
    case SizeTextRole:
        return formatByteCount(file->size, m_byteUnits);
    case ExtensionRole:
        return file->fileExtension();
    case CategoryRole:
        return file->category.index();
    case CategoryNameRole:
        return file->category.rawValue();
    case CategoryIconRole:
        return file->category.icon();
    case CategoryColorRole:
        return file->category.color().name();
    case ModifiedMSecsRole:
        return double(file->modifiedMSecs);
    case IsSafeToDeleteRole:
        return file->isSafeToDelete();
    case IsDefinitelySafeRole:
        return file->isDefinitelySafe();
    case IsLinkedRole:
        return file->linkCount > 1;
    case SelectedRole:
        // Until the rows of a new list arrive, the selection indexes a list the table does not
        // show yet.
        return sameList(m_shownFiles, m_files) && m_selection.contains(m_rows[index.row()]);
    default:
        return {};
    }
}

QHash<int, QByteArray> FileListModel::roleNames() const {
    return {
        {FileIdRole, "fileId"},
        {NameRole, "name"},
        {PathRole, "path"},
        {FolderRole, "folder"},
        {SizeRole, "size"},
        {SizeTextRole, "sizeText"},
        {ExtensionRole, "fileExtension"},
        {CategoryRole, "category"},
        {CategoryNameRole, "categoryName"},
        {CategoryIconRole, "categoryIcon"},
        {CategoryColorRole, "categoryColor"},
        {ModifiedMSecsRole, "modifiedMSecs"},
        {IsSafeToDeleteRole, "isSafeToDelete"},
        {IsDefinitelySafeRole, "isDefinitelySafe"},
        {SelectedRole, "selected"},
        {IsLinkedRole, "isLinked"},
    };
}

} // namespace ravelinth
