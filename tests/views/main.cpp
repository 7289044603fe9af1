#include "ViewRegistration.h"

#include <QQmlEngine>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(RavelinthPlugin)

class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable() { ravelinth::views::registerViewTypes(); }
    void qmlEngineAvailable(QQmlEngine *engine) { engine->addImportPath(u"qrc:/"_qs); }
};

QUICK_TEST_MAIN_WITH_SETUP(views, Setup)
#include "main.moc"
