#include "TestTree.h"

#include "models/ScanCategory.h"

#include <QDir>
#include <QProcess>
#include <QtTest>

#include <cstring>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace ravelinth::test {

namespace {

void makeParents(const QByteArray &path) {
    for (qsizetype slash = path.indexOf('/', 1); slash > 0; slash = path.indexOf('/', slash + 1))
        ::mkdir(path.left(slash).constData(), 0755);
}

} // namespace

namespace {

// Every folder on the way can be entered by any user: a checkout inside a private home or a
// mode-700 temporary folder is not.
bool everyoneCanEnter(const QString &folder) {
    for (QString path = folder; !path.isEmpty() && path != u"/"_qs; path = QFileInfo(path).path()) {
        struct stat info {};
        if (::stat(QFile::encodeName(path).constData(), &info) != 0 || !(info.st_mode & S_IXOTH))
            return false;
    }
    return true;
}

} // namespace

// Trees must not live under a folder whose path reads as a cache ("/tmp", "cache", ...), or every
// file in them would be classed as cache; nor on tmpfs or under /dev, where the Trash refuses to
// go and every path counts as protected. After RAVELINTH_TEST_ROOT, a folder on the system disk
// that every user can reach (the unprivileged-user cases need that), and only without root the
// home folder or /dev/shm.
QString treeBase(TreeReach reach) {
    QStringList candidates{qEnvironmentVariable("RAVELINTH_TEST_ROOT"),
                           u"/var/lib/ravelinth-test-trees"_qs,
                           QDir::homePath() + u"/.ravelinth-test-trees"_qs, u"/dev/shm"_qs};
    for (const QString &candidate : std::as_const(candidates)) {
        if (candidate.isEmpty() || ScanCategory::isInCacheDirectory(candidate))
            continue;
        if (!QDir().mkpath(candidate) || !QFileInfo(candidate).isWritable())
            continue;
        if (reach == TreeReach::everyone) {
            ::chmod(QFile::encodeName(candidate).constData(), 0755);
            if (!everyoneCanEnter(candidate))
                continue;
        }
        return candidate;
    }
    qFatal("no folder for test trees outside a cache-like path; set RAVELINTH_TEST_ROOT");
}

namespace {

// The random part of the name can itself read as a cache folder ("…-aTmpQ1", "…-xTemp9"), which
// would class every file below it as cache: draw again until it does not.
void makeFolderNotNamedLikeACache(std::optional<QTemporaryDir> &dir, const QString &pattern) {
    do {
        dir.emplace(pattern);
        QVERIFY2(dir->isValid(), "cannot make a temporary directory");
    } while (ScanCategory::isInCacheDirectory(dir->path() + u"/file"_qs));
}

} // namespace

TestTree::TestTree(TreeReach reach) {
    makeFolderNotNamedLikeACache(m_dir, treeBase(reach) + u"/ravelinth-tree-XXXXXX"_qs);
    m_root = QFile::encodeName(m_dir->path());
}

TestTree::~TestTree() {
    // GNU rm walks relative to descriptors, so chains deeper than PATH_MAX go too.
    QProcess::execute(u"rm"_qs, {u"-rf"_qs, QFile::decodeName(m_root)});
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

QByteArray TestTree::socket(QByteArrayView relative) {
    const QByteArray full = path(relative);
    makeParents(full);
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    // Bound through a short relative name: socket addresses are limited to about 100 bytes.
    const int slash = full.lastIndexOf('/');
    const QByteArray name = full.mid(slash + 1);
    if (fd < 0 || size_t(name.size()) >= sizeof(address.sun_path))
        qFatal("cannot make socket %s", full.constData());
    std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
    const QByteArray previous = QDir::currentPath().toLocal8Bit();
    if (::chdir(full.left(slash).constData()) != 0 ||
        ::bind(fd, reinterpret_cast<sockaddr *>(&address), sizeof(address)) != 0)
        qFatal("cannot bind socket %s", full.constData());
    ::close(fd);
    if (::chdir(previous.constData()) != 0)
        qFatal("cannot return to %s", previous.constData());
    return full;
}

void TestTree::deepChain(QByteArrayView relative, int depth, QByteArrayView link,
                         QByteArrayView leafName, qint64 leafSize) {
    const QByteArray start = folder(relative);
    int fd = ::open(start.constData(), O_RDONLY | O_DIRECTORY);
    const QByteArray linkName = link.toByteArray();
    for (int level = 0; level < depth && fd >= 0; ++level) {
        ::mkdirat(fd, linkName.constData(), 0755);
        const int child = ::openat(fd, linkName.constData(), O_RDONLY | O_DIRECTORY);
        ::close(fd);
        fd = child;
    }
    if (fd < 0)
        qFatal("cannot make a chain %d deep", depth);
    const int leaf =
        ::openat(fd, leafName.toByteArray().constData(), O_CREAT | O_WRONLY | O_TRUNC, 0644);
    if (leaf < 0 || ::ftruncate(leaf, leafSize) != 0)
        qFatal("cannot make the leaf of the chain");
    ::close(leaf);
    ::close(fd);
}

// The environment lives beside the trees, on the same file system, so that the home Trash is
// the one that receives their files.
ScopedTestEnvironment::ScopedTestEnvironment() {
    makeFolderNotNamedLikeACache(m_dir, treeBase() + u"/ravelinth-home-XXXXXX"_qs);
    m_home = QFile::encodeName(m_dir->path());
    const QList<QPair<const char *, QByteArray>> values{
        {"HOME", m_home},
        {"XDG_DATA_HOME", m_home + "/.local/share"},
        {"XDG_CONFIG_HOME", m_home + "/.config"},
        {"XDG_CACHE_HOME", m_home + "/.cache"},
        {"XDG_STATE_HOME", m_home + "/.local/state"},
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
    // The Trash may hold names that are not UTF-8, which QDir cannot remove.
    QProcess::execute(u"rm"_qs, {u"-rf"_qs, QFile::decodeName(m_home)});
    for (const auto &[name, value] : m_saved) {
        if (value)
            qputenv(name.constData(), *value);
        else
            qunsetenv(name.constData());
    }
}

QList<QByteArray> pathsOf(const ScanResult &result) {
    QList<QByteArray> paths;
    for (const FileItem &file : result.files)
        paths.append(file.path);
    return paths;
}

} // namespace ravelinth::test
