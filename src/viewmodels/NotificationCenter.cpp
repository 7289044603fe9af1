#include "viewmodels/NotificationCenter.h"

namespace ravelinth {

NotificationCenter &NotificationCenter::shared() {
    static NotificationCenter center;
    return center;
}

const QStringList &NotificationCenter::allNames() {
    static const QStringList names{startNewScan, browseFolder,   exportList,     startScan,
                                   stopScan,     quickScan,      selectAllFiles, showDashboard,
                                   showScanner,  refreshDiskInfo};
    return names;
}

void NotificationCenter::post(const QString &name, const QVariant &object) {
    Q_ASSERT_X(allNames().contains(name), "NotificationCenter::post", "unknown name");
    emit posted(name, object);
}

} // namespace ravelinth
