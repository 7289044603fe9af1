#include "Application.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(RavelinthPlugin)

namespace ravelinth::app {

int runApplication(int argc, char **argv) {
    QGuiApplication app(argc, argv);
    QGuiApplication::setOrganizationName(u"Ravelinth"_qs);
    QGuiApplication::setApplicationName(u"Ravelinth"_qs);

    QQmlApplicationEngine engine;
    engine.addImportPath(u"qrc:/"_qs);
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreationFailed, &app,
        [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
    engine.load(QUrl(u"qrc:/Ravelinth/Main.qml"_qs));
    return QGuiApplication::exec();
}

} // namespace ravelinth::app
