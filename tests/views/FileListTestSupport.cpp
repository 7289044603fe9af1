#include "FileListTestSupport.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QQmlEngine>
#include <QTemporaryDir>

#include <unistd.h>

namespace ravelinth::test {

TestFolder::TestFolder(QObject *parent) : QObject(parent) {}

QString TestFolder::root() const {
    return QFile::decodeName(m_tree.root());
}

QString TestFolder::file(const QString &relative, double size, double ageSeconds) {
    const qint64 mtime = QDateTime::currentSecsSinceEpoch() - qint64(ageSeconds);
    return QFile::decodeName(m_tree.file(relative.toUtf8(), qint64(size), mtime));
}

bool TestFolder::exists(const QString &relative) const {
    return ::access(m_tree.path(relative.toUtf8()).constData(), F_OK) == 0;
}

void DesktopRecorder::clear() {
    m_opened.clear();
    emit openedChanged();
}

void DesktopRecorder::open(const QUrl &url) {
    m_opened.append(url.toString(QUrl::FullyEncoded));
    emit openedChanged();
}

namespace {

DesktopRecorder *recorder() {
    static DesktopRecorder *instance = new DesktopRecorder;
    return instance;
}

// Runs as the test application starts, before any view: the views read and write settings, the
// Trash and the desktop, so all of that is pointed at throwaway places for the whole run (GLib
// reads the data folder once per process, which is why this cannot wait for a test).
void isolateAndRegister() {
    static QTemporaryDir home(QCoreApplication::applicationDirPath() + u"/views-home-XXXXXX"_qs);
    if (!home.isValid())
        qFatal("cannot make a home folder for the view tests");
    const QByteArray base = QFile::encodeName(home.path());
    qputenv("HOME", base);
    qputenv("XDG_CONFIG_HOME", base + "/.config");
    qputenv("XDG_DATA_HOME", base + "/.local/share");
    qputenv("XDG_CACHE_HOME", base + "/.cache");
    qputenv("RAVELINTH_TEST_ROOT", base + "/trees");
    // No file manager answers: revealing falls back to opening a folder, which lands below.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/ravelinth-test-bus");
    QDesktopServices::setUrlHandler(u"file"_qs, recorder(), "open");

    qmlRegisterType<TestFolder>("RavelinthTest", 1, 0, "TestFolder");
    qmlRegisterSingletonType<DesktopRecorder>(
        "RavelinthTest", 1, 0, "TestDesktop", [](QQmlEngine *engine, QJSEngine *) -> QObject * {
            engine->setObjectOwnership(recorder(), QQmlEngine::CppOwnership);
            return recorder();
        });
}

Q_COREAPP_STARTUP_FUNCTION(isolateAndRegister)

} // namespace

} // namespace ravelinth::test
