#include "viewmodels/SelectionController.h"

#include "viewmodels/FileListModel.h"

namespace ravelinth {

SelectionController::SelectionController(FileListModel &files, QObject *parent)
    : QObject(parent), m_files(files) {
    connect(&m_files, &FileListModel::selectionChanged, this, [this] {
        m_identifiers.reset();
        emit changed();
    });
}

int SelectionController::count() const {
    return int(m_files.selection().count());
}

const QSet<QUuid> &SelectionController::identifiers() const {
    if (!m_identifiers)
        m_identifiers = m_files.selection().identifiers(m_files.files());
    return *m_identifiers;
}

void SelectionController::setIdentifiers(const QSet<QUuid> &ids) {
    m_files.editSelection().assign(0, m_files.files(), ids);
    edited();
}

void SelectionController::edited() {
    m_files.selectionEdited();
}

void SelectionController::selectOnly(int row) {
    const int index = m_files.fileIndexOfRow(row);
    if (index < 0)
        return;
    FileSelection &selection = m_files.editSelection();
    selection.reset(0, m_files.files().size());
    selection.set(index, true);
    edited();
}

void SelectionController::toggle(int row) {
    const int index = m_files.fileIndexOfRow(row);
    if (index < 0)
        return;
    FileSelection &selection = m_files.editSelection();
    selection.set(index, !selection.contains(index));
    edited();
}

void SelectionController::selectRange(int fromRow, int toRow) {
    FileSelection &selection = m_files.editSelection();
    for (int row = std::min(fromRow, toRow); row <= std::max(fromRow, toRow); ++row)
        selection.set(m_files.fileIndexOfRow(row), true);
    edited();
}

void SelectionController::selectAll() {
    FileSelection &selection = m_files.editSelection();
    selection.reset(0, m_files.files().size());
    for (int index : m_files.currentQueryIndices())
        selection.set(index, true);
    edited();
}

void SelectionController::clear() {
    setIdentifiers({});
}

bool SelectionController::isSelected(int row) const {
    return m_files.selection().contains(m_files.fileIndexOfRow(row));
}

QStringList SelectionController::clickedSet(int row) const {
    const FileItem *clicked = m_files.fileAt(row);
    if (!clicked)
        return {};
    if (!isSelected(row))
        return {clicked->id.toString(QUuid::WithoutBraces)};
    QStringList ids;
    const FileSelection &selection = m_files.selection();
    const QList<FileItem> &files = m_files.files();
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (selection.contains(i))
            ids.append(files[i].id.toString(QUuid::WithoutBraces));
    }
    return ids;
}

} // namespace ravelinth
