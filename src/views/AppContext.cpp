#include "AppContext.h"

#include "models/PlatformWords.h"
#include "models/QuickAccessLocation.h"
#include "services/FinderService.h"
#include "services/QuickAccessLocations.h"
#include "viewmodels/NotificationCenter.h"

#include <QVariantMap>

namespace ravelinth::views {

NotificationCenter *AppContext::notifications() const {
    return &NotificationCenter::shared();
}

FinderService *AppContext::finder() const {
    return &FinderService::shared();
}

QVariantList AppContext::quickAccessLocations() const {
    QVariantList list;
    for (const QuickAccessLocation &location : defaultQuickAccessLocations()) {
        list.append(QVariantMap{{u"name"_qs, location.name},
                                {u"path"_qs, location.path},
                                {u"icon"_qs, location.icon},
                                {u"color"_qs, location.color.name()}});
    }
    return list;
}

QString AppContext::version() const {
    return QStringLiteral(RAVELINTH_VERSION);
}

QString AppContext::words(const QString &text) const {
    return PlatformWords::text(text);
}

QString AppContext::shortcutWords(const QString &keys) const {
    return PlatformWords::shortcut(keys);
}

} // namespace ravelinth::views
