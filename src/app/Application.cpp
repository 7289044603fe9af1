#include "Application.h"

#include "QmlTypes.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(RavelinthPlugin)

namespace ravelinth::app {

namespace {

// RAVELINTH_SCREENSHOT=out.png saves the window as it looks after RAVELINTH_SCREENSHOT_DELAY
// milliseconds (default 1500) and quits: how the window is checked on a machine without a
// screen (QT_QPA_PLATFORM=offscreen). RAVELINTH_SCREENSHOT_SCAN=DIR scans DIR first, so the
// picture shows a result (scripts/screenshot.sh).
void scheduleScreenshot(QQmlApplicationEngine &engine, RavelinthViewModel &viewModel) {
    const QString path = qEnvironmentVariable("RAVELINTH_SCREENSHOT");
    if (path.isEmpty())
        return;
    if (const QString tree = qEnvironmentVariable("RAVELINTH_SCREENSHOT_SCAN"); !tree.isEmpty()) {
        viewModel.setScanPath(tree);
        viewModel.startScan();
    }
    bool ok = false;
    int delay = qEnvironmentVariableIntValue("RAVELINTH_SCREENSHOT_DELAY", &ok);
    if (!ok)
        delay = 1500;
    QTimer::singleShot(delay, &engine, [&engine, path] {
        const auto roots = engine.rootObjects();
        auto *window = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first());
        const bool saved = window && window->grabWindow().save(path);
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

} // namespace

int runApplication(int argc, char **argv) {
    QGuiApplication app(argc, argv);
    QGuiApplication::setOrganizationName(u"Ravelinth"_qs);
    QGuiApplication::setApplicationName(u"Ravelinth"_qs);
    QGuiApplication::setApplicationDisplayName(u"Ravelinth"_qs);
    // Wayland compositors match a window to its menu entry by this id, not by the binary's name.
    const QString appId = u"io.github.ravelinth.Ravelinth"_qs;
    QGuiApplication::setDesktopFileName(appId);
    QGuiApplication::setWindowIcon(
        QIcon::fromTheme(appId, QIcon(u":/icons/io.github.ravelinth.Ravelinth.svg"_qs)));

    // The root outlives the engine that shows it.
    RavelinthViewModel viewModel;
    views::RavelinthViewModelForeign::setProvider([&viewModel] { return &viewModel; });
    QQmlApplicationEngine engine;
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreationFailed, &app,
        [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
    engine.load(QUrl(u"qrc:/qt-project.org/imports/Ravelinth/Main.qml"_qs));
    scheduleScreenshot(engine, viewModel);
    return QGuiApplication::exec();
}

} // namespace ravelinth::app
