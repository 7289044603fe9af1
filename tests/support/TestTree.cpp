#include "TestTree.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ravelinth::test {

namespace {

void makeParents(const QByteArray &path) {
    for (qsizetype slash = path.indexOf('/', 1); slash > 0; slash = path.indexOf('/', slash + 1))
        ::mkdir(path.left(slash).constData(), 0755);
}

} // namespace

TestTree::TestTree() {
    QVERIFY2(m_dir.isValid(), "cannot make a temporary directory");
    m_root = QFile::encodeName(m_dir.path());
}

QByteArray TestTree::path(QByteArrayView relative) const {
    return relative.isEmpty() ? m_root : m_root + '/' + relative.toByteArray();
}

QByteArray TestTree::file(QByteArrayView relative, qint64 size, std::optional<qint64> mtimeSecs) {
    const QByteArray full = path(relative);
    makeParents(full);
    const int fd = ::open(full.constData(), O_CREAT | O_WRONLY | O_TRUNC, 0644);
    if (fd < 0)
        qFatal("cannot create %s", full.constData());
    if (::ftruncate(fd, size) != 0)
        qFatal("cannot size %s", full.constData());
    if (mtimeSecs) {
        const timespec times[2] = {{*mtimeSecs, 0}, {*mtimeSecs, 0}};
        ::futimens(fd, times);
    }
    ::close(fd);
    return full;
}

QByteArray TestTree::folder(QByteArrayView relative) {
    const QByteArray full = path(relative);
    makeParents(full + '/');
    return full;
}

QByteArray TestTree::symlink(QByteArrayView target, QByteArrayView relative) {
    const QByteArray full = path(relative);
    makeParents(full);
    if (::symlink(target.toByteArray().constData(), full.constData()) != 0)
        qFatal("cannot link %s", full.constData());
    return full;
}

QByteArray TestTree::fifo(QByteArrayView relative) {
    const QByteArray full = path(relative);
    makeParents(full);
    if (::mkfifo(full.constData(), 0644) != 0)
        qFatal("cannot make fifo %s", full.constData());
    return full;
}

ScopedTestEnvironment::ScopedTestEnvironment() {
    m_home = QFile::encodeName(m_dir.path());
    const QList<QPair<const char *, QByteArray>> values{
        {"HOME", m_home},
        {"XDG_DATA_HOME", m_home + "/.local/share"},
        {"XDG_CONFIG_HOME", m_home + "/.config"},
        {"XDG_CACHE_HOME", m_home + "/.cache"},
        {"XDG_RUNTIME_DIR", m_home + "/runtime"},
    };
    for (const auto &[name, value] : values) {
        m_saved.append({name, qEnvironmentVariableIsSet(name)
                                  ? std::optional<QByteArray>(qgetenv(name))
                                  : std::nullopt});
        makeParents(value + '/');
        qputenv(name, value);
    }
    ::chmod((m_home + "/runtime").constData(), 0700);
}

ScopedTestEnvironment::~ScopedTestEnvironment() {
    for (const auto &[name, value] : m_saved) {
        if (value)
            qputenv(name.constData(), *value);
        else
            qunsetenv(name.constData());
    }
}

} // namespace ravelinth::test
