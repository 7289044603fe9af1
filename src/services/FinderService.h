#pragma once

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFuture>
#include <QList>
#include <QObject>
#include <QString>

#include <optional>

namespace ravelinth {

// The desktop's file manager and the folder chooser.
//
// revealInFinder() makes one asynchronous org.freedesktop.FileManager1.ShowItems call with every
// path, in order, made absolute against the working folder, and returns at once; when no file
// manager answers within 2.5 seconds (no session bus, a bus that does not speak, a file manager
// that never replies) it opens the first item's folder instead.
//
// selectFolder() asks the interface for a folder: it emits folderSelectionRequested(), and the
// interface shows its chooser (directories only, single selection, no folder creation, starting
// in `initialPath` or the home folder, titled `title`) and answers with completeFolderSelection().
// The future finishes with the chosen path, or nothing on cancel. With nobody listening it
// finishes with nothing at once.
class FinderService : public QObject {
    Q_OBJECT

public:
    static FinderService &shared();
    ~FinderService() override;

    void revealInFinder(const QList<QByteArray> &paths);
    // Opens the file with the application the desktop associates with it; does not wait.
    void openFile(const QByteArray &path);
    // Puts plain text on the clipboard (only when a GUI application is running).
    void copyToClipboard(const QString &text);

    QFuture<std::optional<QString>> selectFolder(const QString &title,
                                                 const std::optional<QString> &initialPath);

public slots:
    // An empty path means the user cancelled.
    void completeFolderSelection(const QString &path);

signals:
    void folderSelectionRequested(const QString &title, const QString &initialPath);
    // After each reveal: whether a file manager took the call (else the folder was opened).
    void revealCompleted(bool fileManagerAnswered);

private:
    explicit FinderService(QObject *parent = nullptr);
    void showItems(const QList<QByteArray> &paths, bool busAnswers, QDeadlineTimer deadline);
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ravelinth
