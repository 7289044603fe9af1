#pragma once

#include "models/ScanResult.h"
#include "models/ScanState.h"

#include <QObject>
#include <QString>

#include <memory>
#include <optional>

namespace ravelinth {

class FileScannerService;

// One scan at a time: where it looks, what it keeps, where it stands. A finished scan hands its
// result on through `finished`; a failed one through `failed`.
class ScanController : public QObject {
    Q_OBJECT
    Q_PROPERTY(ravelinth::ScanState state READ state NOTIFY stateChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY stateChanged)
    Q_PROPERTY(QString path READ path WRITE setPath NOTIFY pathChanged)
    Q_PROPERTY(
        double minFileSizeMB READ minFileSizeMB WRITE setMinFileSizeMB NOTIFY minFileSizeMBChanged)
    Q_PROPERTY(bool includeHiddenFiles READ includeHiddenFiles WRITE setIncludeHiddenFiles NOTIFY
                   includeHiddenFilesChanged)

public:
    explicit ScanController(QObject *parent = nullptr);
    ~ScanController() override;

    const ScanState &state() const { return m_state; }
    bool isScanning() const { return m_state.isScanning(); }
    QString path() const { return m_path; }
    void setPath(const QString &path);
    double minFileSizeMB() const { return m_minFileSizeMB; }
    void setMinFileSizeMB(double megabytes);
    bool includeHiddenFiles() const { return m_includeHiddenFiles; }
    void setIncludeHiddenFiles(bool include);
    // Read when a scan begins; pseudo file systems are never entered either way.
    bool skipSystemDirectories() const { return m_skipSystemDirectories; }
    void setSkipSystemDirectories(bool skip) { m_skipSystemDirectories = skip; }
    // Read when a scan begins, like the system folders.
    void setExclusions(ScanExclusions exclusions) { m_exclusions = std::move(exclusions); }
    void setStayOnOneFileSystem(bool stay) { m_stayOnOneFileSystem = stay; }
    void setScanNetworkDrives(bool scan) { m_scanNetworkDrives = scan; }

    // Whether a file at `path` of `size` bytes belongs to the results of the last scan that
    // finished: under its folder, at or above its threshold, visible to it, not excluded.
    bool resultWouldKeep(const QByteArray &path, qint64 size) const;
    // Announces the state again, for texts made from it whose units have changed.
    void restate() { emit stateChanged(); }
    // Does nothing while a scan runs. Emits `starting` first, so the old results can go.
    Q_INVOKABLE void start();
    Q_INVOKABLE void stop();
    // Back to the start, as for a new scan: a running scan is stopped and forgotten (whatever it
    // still finds is dropped), the results go (`cleared`) and the state is idle.
    Q_INVOKABLE void reset();
    // Asks for a folder with the folder chooser and takes it as the path.
    Q_INVOKABLE void browse();

signals:
    void stateChanged();
    void pathChanged();
    void minFileSizeMBChanged();
    void includeHiddenFilesChanged();
    void starting();
    void cleared();
    void finished(const ravelinth::ScanResult &result);
    void failed(const QString &message);

private:
    struct Task;
    void setState(ScanState state);
    void setProgressState(ScanState state);
    void begin(std::shared_ptr<FileScannerService> scanner, std::shared_ptr<Task> task);

    ScanState m_state;
    QString m_path;
    double m_minFileSizeMB = 100.0;
    bool m_includeHiddenFiles = false;
    bool m_skipSystemDirectories = true;
    ScanExclusions m_exclusions;
    bool m_stayOnOneFileSystem = false;
    bool m_scanNetworkDrives = false;
    bool m_progressAnnouncementPending = false;
    std::shared_ptr<FileScannerService> m_scanner;
    struct ResultScope {
        QByteArray root;
        qint64 minFileSizeBytes = 0;
        bool includeHiddenFiles = false;
        ScanExclusions exclusions;
    };
    std::optional<ResultScope> m_resultScope;
    std::shared_ptr<Task> m_task;
};

} // namespace ravelinth
