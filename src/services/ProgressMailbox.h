#pragma once

#include "services/FileScannerService.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace ravelinth {

// Reports wait here and reach the receiver's thread in batches, every report still on a handler
// call of its own and in order. Waking the main thread for every hundred files cost the walk
// more than the reports themselves; a batch every few milliseconds is still far faster than a
// screen redraws.
class ProgressMailbox : public std::enable_shared_from_this<ProgressMailbox> {
public:
    ProgressMailbox(QPointer<QObject> receiver, ScanProgressHandler handler)
        : m_receiver(std::move(receiver)), m_handler(std::move(handler)) {}

    // Any thread.
    void post(qint64 files, qint64 bytes, QString path) {
        bool schedule = false;
        {
            std::lock_guard lock(m_mutex);
            m_pending.push_back({files, bytes, std::move(path)});
            schedule = !std::exchange(m_scheduled, true);
        }
        if (!schedule)
            return;
        QMetaObject::invokeMethod(
            m_receiver.data(),
            [self = shared_from_this()] {
                QTimer::singleShot(batchMSecs, self->m_receiver.data(),
                                   [self] { self->deliver(); });
            },
            Qt::QueuedConnection);
    }

    // Any thread: hands over what is pending without waiting for the batch's timer.
    void flush() {
        QMetaObject::invokeMethod(
            m_receiver.data(), [self = shared_from_this()] { self->deliver(); },
            Qt::QueuedConnection);
    }

private:
    static constexpr int batchMSecs = 8;

    struct Report {
        qint64 files;
        qint64 bytes;
        QString path;
    };

    void deliver() {
        std::vector<Report> reports;
        {
            std::lock_guard lock(m_mutex);
            reports.swap(m_pending);
            m_scheduled = false;
        }
        for (const Report &report : reports)
            m_handler(report.files, report.bytes, report.path);
    }

    QPointer<QObject> m_receiver;
    ScanProgressHandler m_handler;
    std::mutex m_mutex;
    std::vector<Report> m_pending;
    bool m_scheduled = false;
};

} // namespace ravelinth
