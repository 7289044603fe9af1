#include "Programs.h"
#include "TestTree.h"
#include "services/ProtectedLocations.h"
#include "services/TrashService.h"

#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

const QList<QByteArray> systemFolders{"/usr",    "/bin", "/sbin", "/lib", "/lib32", "/lib64",
                                      "/libx32", "/etc", "/boot", "/dev", "/proc",  "/sys"};

// Where a path leads: a move to the Trash would leave it absent or lead somewhere else.
QByteArray identityOf(const QByteArray &path) {
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return "absent";
    return QByteArray::number(quint64(info.st_dev)) + ':' +
           QByteArray::number(quint64(info.st_ino));
}

const QString refusal = u"Protected system location"_qs;

} // namespace

class ProtectedLocationsTest : public QObject {
    Q_OBJECT

    ScopedTestEnvironment environment;

    // Spellings of the protected places: as written, with trailing slashes, doubled slashes,
    // "." and "..", and reached through links.
    QList<QByteArray> protectedSpellings(TestTree &tree) {
        QList<QByteArray> paths{"/",
                                "//",
                                "/.",
                                "/..",
                                "/tmp/..",
                                "/etc/",
                                "//etc//hosts",
                                "/usr/./bin",
                                "/usr/lib/../bin/env",
                                "/tmp/../../etc/passwd",
                                "/proc/version",
                                "/sys/kernel",
                                "/dev/null",
                                "/boot/none"};
        for (const QByteArray &folder : systemFolders)
            paths << folder << folder + "/ravelinth-no-such-file";
        const QByteArray home = environment.home();
        paths << home << home + "/" << home + "/." << home + "/sub/.." << home + "//";
        tree.folder("sub");
        paths << tree.symlink("/etc", "etc-link") + "/hosts"
              << tree.symlink("/", "root-link") + "/usr" << tree.symlink(home, "home-link") + "/"
              << tree.path("home-link/.");
        return paths;
    }

private slots:
    void everySpellingOfAProtectedPlaceIsRefused() {
        TestTree tree;
        const QList<QByteArray> paths = protectedSpellings(tree);
        for (const QByteArray &path : paths)
            QVERIFY2(isProtectedLocation(path), path.constData());
        // Only once every one is known to be refused do they go near the Trash.
        QList<QByteArray> before;
        for (const QByteArray &path : paths)
            before.append(identityOf(path));
        const QList<TrashResult> results = TrashService::moveToTrashNow(paths);
        for (qsizetype i = 0; i < paths.size(); ++i) {
            const auto *failure = std::get_if<TrashFailure>(&results[i]);
            QVERIFY2(failure && failure->error.endsWith(u"' to Trash: "_qs + refusal),
                     paths[i].constData());
            QCOMPARE(identityOf(paths[i]), before[i]);
        }
    }

    void neighboursOfProtectedPlacesAreNotProtected() {
        TestTree tree;
        const QList<QByteArray> paths{"/run/media/someone/USB/movie.mkv",
                                      "/run",
                                      "/run/user/1000/file",
                                      "/usrlocal",
                                      "/lib64x",
                                      "/etcetera/x",
                                      "/bootstrap.iso",
                                      "/devices",
                                      "/system",
                                      "/tmp/x",
                                      "/var/tmp/big.iso",
                                      "/home",
                                      "/opt/app.AppImage",
                                      "/media/disk/x",
                                      "/mnt/x",
                                      environment.home() + "/Downloads/setup.dmg",
                                      environment.home() + "x",
                                      tree.symlink("/etc/hosts", "link-to-hosts"),
                                      tree.symlink("/usr", "link-to-usr")};
        for (const QByteArray &path : paths)
            QVERIFY2(!isProtectedLocation(path), path.constData());

        // A link that points into /usr goes to the Trash as a link; /usr is not touched.
        const QByteArray usr = identityOf("/usr");
        const QList<TrashResult> results =
            TrashService::moveToTrashNow({tree.path("link-to-usr"), tree.path("link-to-hosts")});
        QVERIFY(std::holds_alternative<TrashSuccess>(results[0]));
        QVERIFY(std::holds_alternative<TrashSuccess>(results[1]));
        QCOMPARE(identityOf("/usr"), usr);
        QVERIFY(QFile::exists(u"/etc/hosts"_qs));
    }

    void anyUserIsRefusedWithTheSameReason() {
        if (::geteuid() != 0)
            QSKIP("dropping to another user needs root");
        TestTree tree;
        ::chmod(tree.root().constData(), 0755);
        const QByteArray home = tree.folder("nobody-home");
        ::chown(home.constData(), nobody, nobody);
        ::chmod(home.constData(), 0700);
        QList<QByteArray> paths{"/",     "/etc/hosts", "/usr/bin/env",           "/lib/x",
                                "/boot", home,         home + "/../nobody-home/"};
        QList<QByteArray> before;
        for (const QByteArray &path : paths)
            before.append(identityOf(path));
        for (const User &user : {User{0, home, home}, User{nobody, home, home}}) {
            QStringList arguments{u"trash"_qs};
            for (const QByteArray &path : paths)
                arguments.append(QFile::decodeName(path));
            const ProcessOutput output = run(QStringLiteral(RAVELINTH_EXECUTABLE), arguments, user);
            QCOMPARE(output.exitCode, 1);
            const QList<QByteArray> lines = output.out.trimmed().split('\n');
            QCOMPARE(lines.size(), paths.size());
            for (const QByteArray &line : lines)
                QVERIFY2(line.endsWith("' to Trash: Protected system location"), line.constData());
            for (qsizetype i = 0; i < paths.size(); ++i)
                QCOMPARE(identityOf(paths[i]), before[i]);
        }
    }
};

QTEST_GUILESS_MAIN(ProtectedLocationsTest)
#include "tst_protectedlocations.moc"
