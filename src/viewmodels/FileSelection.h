#pragma once

#include "models/FileItem.h"

#include <QList>
#include <QSet>
#include <QUuid>

#include <vector>

namespace ravelinth {

// The selection as one flag per entry of one version of the files list (`generation`), so that
// selecting a million rows is a pass over a byte array rather than a million hash insertions.
// Read as a set of identifiers it is built on demand.
class FileSelection {
public:
    quint64 generation() const { return m_generation; }
    qsizetype count() const { return m_count; }
    bool contains(qsizetype index) const {
        return index >= 0 && size_t(index) < m_flags.size() && m_flags[size_t(index)];
    }

    // Nothing selected, for `fileCount` files of list version `generation`.
    void reset(quint64 generation, qsizetype fileCount) {
        m_generation = generation;
        m_flags.assign(size_t(fileCount), 0);
        m_count = 0;
    }
    void set(qsizetype index, bool selected) {
        if (index < 0 || size_t(index) >= m_flags.size() ||
            bool(m_flags[size_t(index)]) == selected)
            return;
        m_flags[size_t(index)] = selected;
        m_count += selected ? 1 : -1;
    }

    QSet<QUuid> identifiers(const QList<FileItem> &files) const {
        QSet<QUuid> ids;
        ids.reserve(m_count);
        for (qsizetype i = 0; i < files.size() && size_t(i) < m_flags.size(); ++i) {
            if (m_flags[size_t(i)])
                ids.insert(files[i].id);
        }
        return ids;
    }
    // Selects the files whose identifiers are in `ids`; identifiers of no file are dropped.
    void assign(quint64 generation, const QList<FileItem> &files, const QSet<QUuid> &ids) {
        reset(generation, files.size());
        if (ids.isEmpty())
            return;
        for (qsizetype i = 0; i < files.size(); ++i) {
            if (ids.contains(files[i].id))
                set(i, true);
        }
    }

private:
    quint64 m_generation = 0;
    std::vector<char> m_flags;
    qsizetype m_count = 0;
};

} // namespace ravelinth
