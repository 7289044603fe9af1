#pragma once

#include <QObject>
#include <QString>

namespace ravelinth {

class FileListModel;
class ScanController;
class TrashService;

// Undoing the program's moves to the Trash from the window: the notice that follows a move, and
// the undo itself, which puts back the newest batch the journal holds (also one moved before a
// restart, or by the command line). Restored files return to the list when the last scan would
// have kept them.
class MoveUndo : public QObject {
    Q_OBJECT
    // Whether there is a batch to undo.
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY canUndoChanged)
    // "Moved 3 files (1.2 GB) to the Trash" after a move, until dismissed; "" when none.
    Q_PROPERTY(QString noticeText READ noticeText NOTIFY noticeChanged)
    Q_PROPERTY(bool isUndoing READ isUndoing NOTIFY isUndoingChanged)

public:
    MoveUndo(TrashService &trash, FileListModel &files, const ScanController &scan,
             QObject *parent = nullptr);

    bool canUndo() const { return m_canUndo; }
    QString noticeText() const { return m_noticeText; }
    bool isUndoing() const { return m_undoing; }

    // A batch moved `count` files of `size` bytes in all.
    void noteMove(int count, qint64 size);
    Q_INVOKABLE void undo();
    Q_INVOKABLE void dismissNotice();

signals:
    void canUndoChanged();
    void noticeChanged();
    void isUndoingChanged();
    // Files came back; some may have been listed again.
    void filesRestored();
    void failed(const QString &message);

private:
    void askWhetherUndoable();
    void setCanUndo(bool can);
    void setNotice(const QString &text);

    TrashService &m_trash;
    FileListModel &m_files;
    const ScanController &m_scan;
    bool m_canUndo = false;
    bool m_undoing = false;
    QString m_noticeText;
};

} // namespace ravelinth
