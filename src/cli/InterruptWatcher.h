#pragma once

#include <QObject>

#include <memory>

class QSocketNotifier;

namespace ravelinth::cli {

// Turns the first Ctrl+C into a Qt signal delivered on the main thread, so a long operation can
// stop cleanly; a second Ctrl+C ends the program as usual.
class InterruptWatcher : public QObject {
    Q_OBJECT

public:
    explicit InterruptWatcher(QObject *parent = nullptr);
    ~InterruptWatcher() override;

signals:
    void interrupted();

private:
    void onReadable();

    int m_pipe[2] = {-1, -1};
    QSocketNotifier *m_notifier = nullptr;
};

} // namespace ravelinth::cli
