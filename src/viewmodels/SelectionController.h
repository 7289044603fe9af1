#pragma once

#include <QObject>
#include <QSet>
#include <QStringList>
#include <QUuid>

#include <optional>

namespace ravelinth {

class FileListModel;

// Selecting rows of the file list: one, toggled, a range, all, none. The flags themselves live
// with the files in FileListModel, so they follow the files into each new list.
class SelectionController : public QObject {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY changed)

public:
    explicit SelectionController(FileListModel &files, QObject *parent = nullptr);

    int count() const;
    // The selection as identifiers, built when first asked for after a change.
    const QSet<QUuid> &identifiers() const;
    void setIdentifiers(const QSet<QUuid> &ids);

    Q_INVOKABLE void selectOnly(int row);
    Q_INVOKABLE void toggle(int row);
    // Adds the rows between, inclusive.
    Q_INVOKABLE void selectRange(int fromRow, int toRow);
    // Every displayed row, and nothing else.
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clear();
    Q_INVOKABLE bool isSelected(int row) const;
    // What a context menu's click concerns: the selection, in list order, when the clicked row
    // is selected; else that row alone.
    Q_INVOKABLE QStringList clickedSet(int row) const;

signals:
    void changed();

private:
    void edited();

    FileListModel &m_files;
    mutable std::optional<QSet<QUuid>> m_identifiers;
};

} // namespace ravelinth
