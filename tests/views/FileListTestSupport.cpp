#include "FileListTestSupport.h"

#include "Programs.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QQmlEngine>

#include <unistd.h>

namespace ravelinth::test {

TestFolder::TestFolder(QObject *parent) : QObject(parent) {}

TestFolder::~TestFolder() {
    m_mounts.clear();
    // Before the tree goes, or it could not remove what is locked.
    for (const QByteArray &path : std::as_const(m_locked))
        run(u"chattr"_qs, {u"-i"_qs, QFile::decodeName(path)});
}

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

bool TestFolder::lock(const QString &relative) {
    const QByteArray path = m_tree.path(relative.toUtf8());
    if (run(u"chattr"_qs, {u"+i"_qs, QFile::decodeName(path)}).exitCode != 0)
        return false;
    m_locked.append(path);
    return true;
}

bool TestFolder::mirror(const QString &relative) {
    auto mount =
        std::make_unique<Mount>(m_tree.path(relative.toUtf8()), Mount::Bind{m_tree.root()});
    if (!mount->mounted())
        return false;
    m_mounts.push_back(std::move(mount));
    return true;
}

bool TestFolder::link(const QString &existing, const QString &relative) {
    return ::link(m_tree.path(existing.toUtf8()).constData(),
                  m_tree.path(relative.toUtf8()).constData()) == 0;
}

void DesktopRecorder::clear() {
    m_opened.clear();
    emit openedChanged();
}

void DesktopRecorder::open(const QUrl &url) {
    m_opened.append(url.toString(QUrl::FullyEncoded));
    emit openedChanged();
}

DesktopRecorder *DesktopRecorder::instance() {
    static DesktopRecorder recorder;
    return &recorder;
}

namespace {

// Runs as the test application starts, before any view. The hermetic home comes from
// TestFiles.cpp; here revealing and opening are caught so that nothing reaches a real desktop.
void catchDesktopRequests() {
    QDesktopServices::setUrlHandler(u"file"_qs, DesktopRecorder::instance(), "open");
}

Q_COREAPP_STARTUP_FUNCTION(catchDesktopRequests)

} // namespace

DesktopRecorder *DesktopRecorder::create(QQmlEngine *, QJSEngine *) {
    QJSEngine::setObjectOwnership(instance(), QJSEngine::CppOwnership);
    return instance();
}

} // namespace ravelinth::test
