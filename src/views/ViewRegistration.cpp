#include "ViewRegistration.h"

#include "AppContext.h"
#include "IconCatalog.h"
#include "SelectAllPassThrough.h"
#include "TextFormat.h"
#include "services/FinderService.h"
#include "viewmodels/NotificationCenter.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QQmlEngine>

namespace ravelinth::views {

void registerViewTypes() {
    static const char *const uri = "Ravelinth";
    qmlRegisterType<RavelinthViewModel>(uri, 1, 0, "RavelinthViewModel");
    qmlRegisterType<Preferences>(uri, 1, 0, "Preferences");
    qmlRegisterType<SelectAllPassThrough>(uri, 1, 0, "SelectAllPassThrough");
    qmlRegisterUncreatableType<NotificationCenter>(uri, 1, 0, "NotificationCenter",
                                                   u"Reached through AppContext"_qs);
    qmlRegisterUncreatableType<FinderService>(uri, 1, 0, "FinderService",
                                              u"Reached through AppContext"_qs);
    qmlRegisterSingletonType<AppContext>(
        uri, 1, 0, "AppContext",
        [](QQmlEngine *engine, QJSEngine *) -> QObject * { return new AppContext(engine); });
    qmlRegisterSingletonType<IconCatalog>(
        uri, 1, 0, "Icons",
        [](QQmlEngine *engine, QJSEngine *) -> QObject * { return new IconCatalog(engine); });
    qmlRegisterSingletonType<TextFormat>(
        uri, 1, 0, "TextFormat",
        [](QQmlEngine *engine, QJSEngine *) -> QObject * { return new TextFormat(engine); });
}

} // namespace ravelinth::views
