#pragma once

#include "models/ScanResult.h"

#include <QObject>
#include <QStringList>

namespace ravelinth {

// What the last finished scan could not cover: the folders it could not read and the mounts it
// did not enter, so that its totals never pass for complete when they are not. Empty while no
// scan has finished, and again from the moment another starts.
class ScanGaps : public QObject {
    Q_OBJECT
    Q_PROPERTY(int unreadableFolderCount READ unreadableFolderCount NOTIFY changed)
    // The first of them (at most a thousand), as display text.
    Q_PROPERTY(QStringList unreadablePaths READ unreadablePaths NOTIFY changed)
    // "3 folders could not be read", "" when every folder could be.
    Q_PROPERTY(QString unreadableSummary READ unreadableSummary NOTIFY changed)
    // One line per mount not entered: "/mnt/nas (nfs4): a network or user-space file system".
    Q_PROPERTY(QStringList skippedMounts READ skippedMounts NOTIFY changed)
    // "2 drives were not entered", "" when none was passed over.
    Q_PROPERTY(QString skippedSummary READ skippedSummary NOTIFY changed)

public:
    explicit ScanGaps(QObject *parent = nullptr);

    int unreadableFolderCount() const { return int(m_unreadableFolders); }
    QStringList unreadablePaths() const { return m_unreadablePaths; }
    QString unreadableSummary() const;
    QStringList skippedMounts() const { return m_skippedMounts; }
    QString skippedSummary() const;

    void take(const ScanResult &result);
    void clear();

signals:
    void changed();

private:
    qint64 m_unreadableFolders = 0;
    QStringList m_unreadablePaths;
    QStringList m_skippedMounts;
};

} // namespace ravelinth
