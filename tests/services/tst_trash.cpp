#include "TestTree.h"
#include "services/TrashService.h"

#include <QProcess>
#include <QtTest>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ravelinth;
using ravelinth::test::ScopedTestEnvironment;
using ravelinth::test::TestTree;

namespace {

bool existsNoFollow(const QByteArray &path) {
    struct stat info {};
    return ::lstat(path.constData(), &info) == 0;
}

QString run(const QString &program, const QStringList &arguments, int *exitCode = nullptr) {
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(60000);
    if (exitCode)
        *exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    return QString::fromLocal8Bit(process.readAll());
}

// What an independent tool (trash-cli) reads back from the home Trash.
QString trashList() {
    return run(u"trash-list"_qs, {});
}

const TrashSuccess &success(const TrashResult &result) {
    return std::get<TrashSuccess>(result);
}
const TrashFailure &failure(const TrashResult &result) {
    return std::get<TrashFailure>(result);
}

// A real second file system: an ext4 image on a loop device, or tmpfs.
class Mount {
public:
    Mount(const QByteArray &where, const QString &kind) : m_where(where) {
        QDir().mkpath(QFile::decodeName(where));
        int code = -1;
        if (kind == u"ext4") {
            const QString image = QFile::decodeName(where) + u".img"_qs;
            run(u"truncate"_qs, {u"-s"_qs, u"32M"_qs, image});
            run(u"mkfs.ext4"_qs, {u"-q"_qs, u"-F"_qs, image});
            m_output =
                run(u"mount"_qs, {u"-o"_qs, u"loop"_qs, image, QFile::decodeName(where)}, &code);
        } else {
            m_output = run(u"mount"_qs,
                           {u"-t"_qs, u"tmpfs"_qs, u"none"_qs, QFile::decodeName(where)}, &code);
        }
        m_mounted = code == 0;
    }
    ~Mount() {
        if (m_mounted)
            ::umount2(m_where.constData(), MNT_DETACH);
    }
    bool mounted() const { return m_mounted; }
    QString output() const { return m_output; }

private:
    QByteArray m_where;
    QString m_output;
    bool m_mounted = false;
};

} // namespace

class TrashTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    ScopedTestEnvironment environment;

private slots:
    void batchKeepsOrderAndLosesNothing() {
        TestTree tree;
        const QByteArray plain = tree.file("Downloads/setup.dmg", 4096);
        const QByteArray latin1 = tree.file("caf\xe9.iso", 10);
        const QByteArray dangling = tree.symlink("nowhere", "dangling");
        const QByteArray folder = tree.file("folder/inner.txt", 3);
        const QByteArray missing = tree.path("missing.pdf");
        const QByteArray twice = tree.file("twice.zip", 5);
        const QByteArray home = environment.home();
        const QByteArray systemLink = tree.symlink("/usr", "system-link");
        const QList<QByteArray> paths{plain,
                                      latin1,
                                      dangling,
                                      tree.path("folder"),
                                      missing,
                                      twice,
                                      twice,
                                      "/tmp/../etc/hosts",
                                      home,
                                      "/",
                                      systemLink + "/bin"};

        QFuture<QList<TrashResult>> future = TrashService().moveToTrash(paths);
        const QList<TrashResult> results = future.result();
        QCOMPARE(results.size(), paths.size());
        for (int i : {0, 1, 2, 3, 5}) {
            QCOMPARE(success(results[i]).originalPath, paths[i]);
            QVERIFY2(!existsNoFollow(paths[i]), paths[i].constData());
            const QByteArray trashed = success(results[i]).trashPath.value_or(QByteArray());
            QVERIFY2(existsNoFollow(trashed), trashed.constData());
            QVERIFY(trashed.startsWith(environment.dataHome() + "/Trash/files/"));
        }
        QVERIFY(existsNoFollow(success(results[3]).trashPath.value() + "/inner.txt"));

        QCOMPARE(failure(results[4]).path, missing);
        QVERIFY(
            failure(results[4]).error.startsWith(u"Failed to move 'missing.pdf' to Trash: "_qs));
        QVERIFY(failure(results[6]).error.startsWith(u"Failed to move 'twice.zip' to Trash: "_qs));
        for (int i : {7, 8, 9, 10}) {
            QVERIFY2(failure(results[i]).error.endsWith(u"to Trash: Protected system location"_qs),
                     qPrintable(failure(results[i]).error));
        }
        QVERIFY(existsNoFollow("/etc/hosts"));
        QVERIFY(existsNoFollow(home));

        const QString listed = trashList();
        // Earlier cases share the Trash: count only this case's entries.
        for (const QByteArray &path : {plain, dangling, twice})
            QVERIFY2(listed.contains(QFile::decodeName(path)), qPrintable(listed));
        QCOMPARE(listed.count(QFile::decodeName(tree.root())), 5);
    }

    void restoredFilesComeBackIdentical() {
        TestTree tree;
        const QByteArray path = tree.path("notes.txt");
        QFile file(QFile::decodeName(path));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("exact bytes\n\0 kept", 18);
        file.close();
        const TrashMoveOutcome moved = TrashService::moveToTrashNow(path);
        QVERIFY2(moved, moved ? "" : qPrintable(moved.error().description()));
        QVERIFY(!existsNoFollow(path));
        QProcess restore;
        restore.start(u"trash-restore"_qs, {QFile::decodeName(path)});
        restore.write("0\n");
        restore.closeWriteChannel();
        QVERIFY(restore.waitForFinished(60000));
        QVERIFY2(file.open(QIODevice::ReadOnly),
                 (restore.readAllStandardOutput() + restore.readAllStandardError()).constData());
        QCOMPARE(file.readAll(), QByteArray("exact bytes\n\0 kept", 18));
    }

    void emptyBatchTouchesNothing() {
        QVERIFY(TrashService::moveToTrashNow(QList<QByteArray>{}).isEmpty());
        QCOMPARE(TrashError::makeFileNotFound("/Users/a/b/report.pdf").description(),
                 u"File not found: /Users/a/b/report.pdf"_qs);
        QCOMPARE(TrashError::makeMoveFailed("/Users/a/b/report.pdf", u"why"_qs).description(),
                 u"Failed to move 'report.pdf' to Trash: why"_qs);
    }

    void lockedFilesStayWhereTheyAre() {
        TestTree tree;
        const QByteArray locked = tree.file("locked.bin", 100);
        int code = -1;
        const QString output = run(u"chattr"_qs, {u"+i"_qs, QFile::decodeName(locked)}, &code);
        if (code != 0)
            QSKIP(qPrintable(u"chattr +i is not possible here: "_qs + output));
        const TrashMoveOutcome outcome = TrashService::moveToTrashNow(locked);
        run(u"chattr"_qs, {u"-i"_qs, QFile::decodeName(locked)});
        QVERIFY(!outcome);
        QVERIFY(
            outcome.error().description().startsWith(u"Failed to move 'locked.bin' to Trash: "_qs));
        QVERIFY(existsNoFollow(locked));
    }

    void otherFileSystemsUseTheirOwnTrashOrRefuse() {
        if (::geteuid() != 0)
            QSKIP("mounting a second file system needs root");
        TestTree tree;
        {
            Mount ext4(tree.path("ext4"), u"ext4"_qs);
            QVERIFY2(ext4.mounted(), qPrintable(ext4.output()));
            const QByteArray file = tree.file("ext4/movie.mkv", 1000);
            const TrashMoveOutcome outcome = TrashService::moveToTrashNow(file);
            QVERIFY2(outcome, outcome ? "" : qPrintable(outcome.error().description()));
            QCOMPARE(outcome->value_or(QByteArray()), tree.path("ext4/.Trash-0/files/movie.mkv"));
            QVERIFY(!existsNoFollow(file));
        }
        {
            Mount tmpfs(tree.path("tmpfs"), u"tmpfs"_qs);
            QVERIFY2(tmpfs.mounted(), qPrintable(tmpfs.output()));
            const QByteArray file = tree.file("tmpfs/clip.mov", 1000);
            const TrashMoveOutcome outcome = TrashService::moveToTrashNow(file);
            QVERIFY(!outcome);
            QVERIFY(existsNoFollow(file));
        }
    }

    void readOnlyFolderRefusesAnUnprivilegedUser() {
        if (::geteuid() != 0)
            QSKIP("dropping to another user needs root");
        TestTree tree;
        const QByteArray file = tree.file("owned-by-root/keep.iso", 10);
        ::chmod(tree.root().constData(), 0755);
        const QString data = QFile::decodeName(tree.path("nobody-data"));
        QDir().mkpath(data);
        ::chown(tree.path("nobody-data").constData(), 65534, 65534);
        int code = -1;
        const QString output =
            run(u"setpriv"_qs,
                {u"--reuid=65534"_qs, u"--regid=65534"_qs, u"--clear-groups"_qs, u"env"_qs,
                 u"HOME="_qs + data, u"XDG_DATA_HOME="_qs + data,
                 QStringLiteral(RAVELINTH_EXECUTABLE), u"trash"_qs, QFile::decodeName(file)},
                &code);
        QCOMPARE(code, 1);
        QVERIFY2(output.startsWith(u"Failed to move 'keep.iso' to Trash: "_qs), qPrintable(output));
        QVERIFY(existsNoFollow(file));
    }
};

QTEST_GUILESS_MAIN(TrashTest)
#include "tst_trash.moc"
