#include "viewmodels/DisplayedFilesModel.h"

#include "models/ByteCountFormatter.h"
#include "utility/BackgroundRelease.h"

namespace ravelinth {

DisplayedFilesModel::DisplayedFilesModel(const FileSelection &selection, QObject *parent)
    : QAbstractTableModel(parent), m_selection(selection) {}

void DisplayedFilesModel::publish(QList<FileItem> files, QList<int> rows, quint64 generation) {
    beginResetModel();
    m_generation = generation;
    std::swap(m_files, files);
    m_rows = std::move(rows);
    endResetModel();
    releaseInBackground(std::move(files));
}

void DisplayedFilesModel::selectionChanged() {
    if (!m_rows.isEmpty())
        emit dataChanged(index(0, 0), index(int(m_rows.size()) - 1, columnCountValue - 1),
                         {SelectedRole});
}

int DisplayedFilesModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : int(m_rows.size());
}

int DisplayedFilesModel::columnCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : columnCountValue;
}

QVariant DisplayedFilesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QStringList titles{QString(),      u"Name"_qs,     u"Size"_qs,
                                    u"Category"_qs, u"Modified"_qs, u"Status"_qs};
    return titles.value(section);
}

const FileItem *DisplayedFilesModel::fileAt(int row) const {
    if (row < 0 || row >= m_rows.size())
        return nullptr;
    return &m_files[m_rows[row]];
}

QVariant DisplayedFilesModel::data(const QModelIndex &index, int role) const {
    const FileItem *file = fileAt(index.row());
    if (!file)
        return {};
    if (role == Qt::DisplayRole) {
        switch (index.column()) {
        case IconColumn:
            return file->category.icon();
        case SizeColumn:
            return formatByteCount(file->size);
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
        return formatByteCount(file->size);
    case ExtensionRole:
        return file->fileExtension();
    case CategoryRole:
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
    case SelectedRole:
        // Until the rows of a new list arrive, the selection indexes a list the table does not
        // show yet.
        return m_selection.generation() == m_generation &&
               m_selection.contains(m_rows[index.row()]);
    default:
        return {};
    }
}

QHash<int, QByteArray> DisplayedFilesModel::roleNames() const {
    return {
        {FileIdRole, "fileId"},
        {NameRole, "name"},
        {PathRole, "path"},
        {FolderRole, "folder"},
        {SizeRole, "size"},
        {SizeTextRole, "sizeText"},
        {ExtensionRole, "fileExtension"},
        {CategoryRole, "category"},
        {CategoryIconRole, "categoryIcon"},
        {CategoryColorRole, "categoryColor"},
        {ModifiedMSecsRole, "modifiedMSecs"},
        {IsSafeToDeleteRole, "isSafeToDelete"},
        {IsDefinitelySafeRole, "isDefinitelySafe"},
        {SelectedRole, "selected"},
    };
}

} // namespace ravelinth
