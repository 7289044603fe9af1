#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace ravelinth {

// The process-wide broadcast that menu commands post to. Names are announced so that a later
// handler can bind to them; nothing in the program listens today.
class NotificationCenter : public QObject {
    Q_OBJECT

public:
    static NotificationCenter &shared();

    static inline const QString startNewScan = QStringLiteral("startNewScan");
    static inline const QString browseFolder = QStringLiteral("browseFolder");
    static inline const QString exportList = QStringLiteral("exportList");
    static inline const QString startScan = QStringLiteral("startScan");
    static inline const QString stopScan = QStringLiteral("stopScan");
    static inline const QString quickScan = QStringLiteral("quickScan");
    static inline const QString selectAllFiles = QStringLiteral("selectAllFiles");
    static inline const QString showDashboard = QStringLiteral("showDashboard");
    static inline const QString showScanner = QStringLiteral("showScanner");
    static inline const QString refreshDiskInfo = QStringLiteral("refreshDiskInfo");
    static const QStringList &allNames();

    // Posts on the calling (main) thread; an unknown name is a programming error.
    Q_INVOKABLE void post(const QString &name, const QVariant &object = {});

signals:
    void posted(const QString &name, const QVariant &object);

private:
    NotificationCenter() = default;
};

} // namespace ravelinth
