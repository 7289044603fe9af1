#pragma once

#include "models/DiskInfo.h"
#include "services/DiskInfoService.h"

#include <QFuture>
#include <QObject>

#include <optional>

namespace ravelinth {

// The boot volume's capacity and use, read in the background: the storage report first, the
// file system's own figures when that fails.
class DiskInfoController : public QObject {
    Q_OBJECT
    Q_PROPERTY(ravelinth::DiskInfo info READ infoOrEmpty NOTIFY infoChanged)
    // False until the first read arrives.
    Q_PROPERTY(bool available READ available NOTIFY infoChanged)

public:
    explicit DiskInfoController(QObject *parent = nullptr);

    const std::optional<DiskInfo> &info() const { return m_info; }
    bool available() const { return m_info.has_value(); }

    Q_INVOKABLE void refresh();
    // Finishes once the read has arrived, or failed.
    QFuture<void> reload();

signals:
    void infoChanged();
    void failed(const QString &message);

private:
    DiskInfo infoOrEmpty() const { return m_info.value_or(DiskInfo{}); }
    void setInfo(DiskInfo info);

    std::optional<DiskInfo> m_info;
    DiskInfoService m_service;
};

} // namespace ravelinth
