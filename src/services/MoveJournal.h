#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

namespace ravelinth {

// One item of a move to the Trash, as the journal keeps it: enough to put it back exactly and to
// know that what lies in the Trash is still what was moved.
struct JournalItem {
    QByteArray originalPath; // exact bytes
    QByteArray trashPath;    // the item's data in the trash folder
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    bool operator==(const JournalItem &) const = default;
};

struct JournalBatch {
    QString id;
    QDateTime time; // UTC
    QList<JournalItem> items;
    bool undone = false;
};

// The record of the program's moves to the Trash, kept so that they can be undone later, also
// after a restart: one line of JSON per moved item (and one per undone batch) in a file under the
// program's state folder. Every line is written and flushed to the disk before the call returns.
// A last line cut short by a crash is ignored on reading, and the next write starts on a line of
// its own. The file stays small: batches older than 30 days, and all but the last 1,000, are
// dropped whenever a new batch begins.
class MoveJournal {
public:
    // The journal at `filePath`; the default is the one every part of the program shares.
    explicit MoveJournal(QString filePath = defaultFilePath());
    static QString defaultFilePath();

    QString filePath() const { return m_filePath; }

    // Records one moved item of batch `batchId`. Returns the reason when it could not be written.
    std::optional<QString> record(const QString &batchId, const QDateTime &time,
                                  const JournalItem &item);
    // Marks the batch as undone, so that the next undo takes the one before it.
    std::optional<QString> markUndone(const QString &batchId);

    // Every batch, oldest first.
    QList<JournalBatch> batches() const;
    // The newest batch not yet undone.
    std::optional<JournalBatch> latestBatchToUndo() const;

    static constexpr int keptBatches = 1000;
    static constexpr int keptDays = 30;

private:
    std::optional<QString> append(const QByteArray &line);
    void dropOldBatches(const QDateTime &now);

    QString m_filePath;
    QString m_lastBatchId; // the batch this object last recorded, so a new one is seen once
};

} // namespace ravelinth
