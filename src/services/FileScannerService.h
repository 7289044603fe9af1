#pragma once

#include "models/Expected.h"
#include "models/ScanResult.h"

#include <QFuture>
#include <QObject>

#include <functional>
#include <memory>

namespace ravelinth {

class FileScannerError {
public:
    enum Code { pathNotFound, enumeratorFailed, permissionDenied, notAFolder };

    static FileScannerError makePathNotFound(QByteArray path) {
        return {pathNotFound, std::move(path)};
    }
    static FileScannerError makeEnumeratorFailed() { return {enumeratorFailed, {}}; }
    static FileScannerError makeNotAFolder(QByteArray path) {
        return {notAFolder, std::move(path)};
    }

    Code code() const { return m_code; }
    const QByteArray &path() const { return m_path; }
    // "Path not found: <path>", "Failed to create directory enumerator", "Permission denied",
    // "Not a folder: <path>".
    QString description() const;

private:
    FileScannerError(Code code, QByteArray path) : m_code(code), m_path(std::move(path)) {}
    Code m_code;
    QByteArray m_path;
};

using ScanOutcome = Expected<ScanResult, FileScannerError>;

// (files counted so far, bytes counted so far, display path of the current file)
using ScanProgressHandler = std::function<void(qint64, qint64, const QString &)>;

// Walks one folder tree on worker threads of its own and keeps the files at or above the
// configured size. However many threads walk, the result is that of one depth-first walk.
//
// scan() returns at once. The future finishes with the ScanResult (or the error) once the walk
// is done; continue it on the main thread with `whenFinished(future, context, ...)`. Every 100
// counted files the progress handler is queued to the thread that called scan() (the main thread);
// the walk never waits for it to run.
//
// A relative path is taken from the working folder at the call, so the result's paths are all
// absolute.
//
// cancel() may be called from any thread. The walk notices it before the next folder it would
// open, or at the first entry after the next progress report, and then returns what it has found
// so far as an ordinary result. Each scan starts with the flag cleared, so a cancel before scan()
// is lost. One scan per service at a time; the destructor cancels a running walk and waits for
// it.
class FileScannerService : public QObject {
    Q_OBJECT

public:
    explicit FileScannerService(QObject *parent = nullptr);
    // `walkThreads` walkers share the tree; 1 walks it on the scan's thread alone. The result is
    // the same for any number.
    explicit FileScannerService(int walkThreads, QObject *parent = nullptr);
    ~FileScannerService() override;

    QFuture<ScanOutcome> scan(QByteArray path, ScanConfiguration configuration,
                              ScanProgressHandler progressHandler = {});
    // Behind a window: the walk's threads then give way to the interface's whenever it wants the
    // processor, and take every cycle it leaves. Off by default (a command line has no window).
    void setYieldsToInterface(bool yields);
    void cancel();

    // The walk's counters: every sized non-directory entry met, kept or not. Read them once the
    // scan's future has finished (they keep their values until the next scan).
    qint64 filesScanned() const;
    qint64 bytesScanned() const;

    // The file at `path` as a scan would list it (a regular file, links not followed), whatever
    // its size; none when nothing of the kind is there.
    static std::optional<FileItem> examineFile(const QByteArray &path);

    static int defaultWalkThreads();
    static const QList<QByteArray> &alwaysSkippedNames();
    static const QList<QByteArray> &systemSkippedNames();

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace ravelinth
