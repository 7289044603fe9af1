#pragma once

#include "models/Expected.h"

#include <QByteArray>
#include <QDateTime>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>
#include <variant>

namespace ravelinth {

class MoveJournal;
struct UndoOutcome;

class TrashError {
public:
    enum Code { moveFailed, fileNotFound };

    static TrashError makeMoveFailed(QByteArray path, QString reason) {
        return {moveFailed, std::move(path), std::move(reason)};
    }
    static TrashError makeFileNotFound(QByteArray path) {
        return {fileNotFound, std::move(path), {}};
    }

    Code code() const { return m_code; }
    const QByteArray &path() const { return m_path; }
    const QString &reason() const { return m_reason; }
    // "Failed to move '<name>' to Trash: <reason>" (only the last component of the path) or
    // "File not found: <whole path>".
    QString description() const;

private:
    TrashError(Code code, QByteArray path, QString reason)
        : m_code(code), m_path(std::move(path)), m_reason(std::move(reason)) {}
    Code m_code;
    QByteArray m_path;
    QString m_reason;
};

struct TrashSuccess {
    QByteArray originalPath; // the path as it was given
    // The entry that path named, found once by the kernel's rules: what was checked, moved and
    // recorded in the Trash as the place to restore to.
    QByteArray movedPath;
    std::optional<QByteArray> trashPath; // where it now lies, when known
    // Why the move could not be recorded for undoing it later; empty when it was.
    QString journalError;
};

struct TrashFailure {
    QByteArray path;
    QString error;  // the whole description, naming the file
    QString reason; // the platform's words alone, for a list that names the file already
};

using TrashResult = std::variant<TrashSuccess, TrashFailure>;
using TrashMoveOutcome = Expected<std::optional<QByteArray>, TrashError>;

// Moves files to the user's Trash, never deleting anything. Paths are exact bytes; each is
// resolved once, and what it resolved to is what is checked and moved (see ProtectedLocations).
// The asynchronous forms run on a worker thread, one move after another in input order, and
// return at once; the synchronous forms are for the command line.
class TrashService : public QObject {
    Q_OBJECT

public:
    explicit TrashService(QObject *parent = nullptr);
    ~TrashService() override;

    QFuture<TrashMoveOutcome> moveToTrash(QByteArray path);
    // One result per path, in input order; never fails as a whole.
    QFuture<QList<TrashResult>> moveToTrash(QList<QByteArray> paths);

    // Undoes the newest batch of the program's journal not yet undone (see trashundo), after the
    // moves asked for before it; nullopt when there is none.
    QFuture<std::optional<UndoOutcome>> undoLatestBatch();
    // Whether the journal holds a batch to undo.
    QFuture<bool> hasBatchToUndo();

    static TrashMoveOutcome moveToTrashNow(const QByteArray &path);
    static QList<TrashResult> moveToTrashNow(const QList<QByteArray> &paths);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// Moves that are undone together, as one action of the user: each moved item is recorded in the
// journal, and the record flushed to the disk, before its result is returned. For a caller that
// reports or stops between items.
class TrashBatch {
public:
    // Records in `journal`, or in the program's journal when none is given; the journal
    // outlives the batch.
    explicit TrashBatch(MoveJournal *journal = nullptr);
    ~TrashBatch();
    TrashBatch(const TrashBatch &) = delete;
    TrashBatch &operator=(const TrashBatch &) = delete;

    TrashResult move(const QByteArray &path);
    Expected<TrashSuccess, TrashError> moveOrFail(const QByteArray &path);
    const QString &id() const { return m_id; }

private:
    QString m_id;
    QDateTime m_time;
    std::unique_ptr<MoveJournal> m_ownJournal;
    MoveJournal *m_journal;
};

} // namespace ravelinth
