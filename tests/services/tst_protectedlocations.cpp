#include "Mount.h"
#include "Programs.h"
#include "TrashInspection.h"
#include "services/ProtectedLocations.h"
#include "services/QuickAccessLocations.h"
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

// Each path is known to be protected before any goes near the Trash, which must then refuse
// every one with the reason and leave where it leads unchanged.
void checkRefused(const QList<QByteArray> &paths) {
    for (const QByteArray &path : paths)
        QVERIFY2(isProtectedLocation(path), path.constData());
    QList<QByteArray> before;
    for (const QByteArray &path : paths)
        before.append(identityOf(path));
    const QList<TrashResult> results = TrashService::moveToTrashNow(paths);
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const auto *failure = std::get_if<TrashFailure>(&results[i]);
        QVERIFY2(failure && failure->error.endsWith(u"' to Trash: Protected system location"_qs),
                 paths[i].constData());
        QCOMPARE(identityOf(paths[i]), before[i]);
    }
}

} // namespace

class ProtectedLocationsTest : public QObject {
    Q_OBJECT

    ScopedTestEnvironment environment;

    // Spellings of the protected places: as written, with trailing slashes, doubled slashes and
    // ".." in their folders, reached through links, and the folders directly under the root.
    QList<QByteArray> protectedSpellings(TestTree &tree) {
        QList<QByteArray> paths{"/",
                                "//",
                                "/etc/",
                                "//etc//hosts",
                                "/usr/./bin",
                                "/usr/lib/../bin/env",
                                "/tmp/../../etc/passwd",
                                "/proc/version",
                                "/sys/kernel",
                                "/dev/null",
                                "/boot/none"};
        for (const QByteArray &folder : systemFolders) {
            if (exists(folder))
                paths << folder << folder + "/ravelinth-no-such-file";
        }
        // Every folder directly under the root, and the links there (/lib on a merged /usr).
        for (const char *name : {"home", "var", "opt", "srv", "mnt", "media", "run", "tmp", "root",
                                 "snap", "lib64", "vmlinuz"}) {
            const QByteArray folder = QByteArray("/") + name;
            if (exists(folder))
                paths << folder << "/.." + folder;
        }
        const QByteArray home = environment.home();
        paths << home << home + "/" << home + "//";
        // The standard folders themselves, as the desktop names them; their contents stay free.
        for (const char *name : {"Desktop", "Documents", "Downloads", "Music", "Pictures", "Videos",
                                 "Templates", "Public"}) {
            QDir().mkpath(QFile::decodeName(home + '/' + name));
            paths << home + '/' + name;
        }
        // Folders every user writes into: /var/tmp, or a shared drop folder anywhere.
        paths << "/var/tmp" << tree.folder("drop");
        ::chmod(tree.path("drop").constData(), 01777);
        tree.folder("sub");
        paths << tree.symlink("/etc", "etc-link") + "/hosts"
              << tree.symlink("/", "root-link") + "/usr"
              << tree.symlink(home, "home-link") + "/Documents"
              << tree.path("sub/../home-link/Documents/");
        return paths;
    }

private slots:
    void quickAccessPresetsAreTheUsersFoldersForTheWholeRun() {
        const QList<QuickAccessLocation> &locations = defaultQuickAccessLocations();
        QCOMPARE(locations.size(), 6);
        QCOMPARE(locations[0].path, QDir::homePath());
        for (const QuickAccessLocation &location : locations)
            QVERIFY2(QDir::isAbsolutePath(location.path), qPrintable(location.path));
        // A preset starts a scan, never a move: where programs live stays out of reach.
        QVERIFY(isProtectedLocation(QFile::encodeName(locations[4].path)));
        QCOMPARE(defaultQuickAccessLocations().constFirst().id, locations.constFirst().id);
    }

    void everySpellingOfAProtectedPlaceIsRefused() {
        TestTree tree;
        checkRefused(protectedSpellings(tree));
    }

    // A last name of "." or ".." names a folder only through another name, and a folder part
    // that leads nowhere names nothing: refused, whatever a textual clean-up would have made of
    // them (the home folder, /etc/passwd). Relative forms: tst_trashresolution.
    void pathsThatNameNoSingleEntryMoveNothing() {
        TestTree tree;
        const QByteArray home = environment.home();
        const QByteArray homeName = home.mid(home.lastIndexOf('/') + 1);
        const QByteArray aboveHome = tree.symlink(home.left(home.lastIndexOf('/')), "L");
        const QByteArray rootLink = tree.symlink("/", "Lroot");
        const QList<QByteArray> paths{"/.",
                                      "/..",
                                      "/tmp/..",
                                      home + "/.",
                                      home + "/sub/..",
                                      aboveHome + "/nonexistent/../" + homeName,
                                      rootLink + "/x/../etc/passwd"};
        const QList<TrashResult> results = TrashService::moveToTrashNow(paths);
        for (qsizetype i = 0; i < paths.size(); ++i) {
            const auto *failure = std::get_if<TrashFailure>(&results[i]);
            QVERIFY2(failure && (failure->error.endsWith(u"names no single item"_qs) ||
                                 failure->error.endsWith(u"No such file or directory"_qs)),
                     paths[i].constData());
        }
        QVERIFY(exists(home));
        QVERIFY(exists("/etc/passwd"));
    }

    // The top of any mounted file system, and a system folder reached through a bind mount that
    // is read-only, so that removing the tree can never reach through it into /etc.
    void mountPointsAndBoundSystemFoldersAreRefused() {
        if (::geteuid() != 0)
            QSKIP("mounting needs root");
        TestTree tree;
        const QByteArray bound = tree.path("bound"), etc = tree.path("etc-bound");
        const Mount boundMount(bound, Mount::Bind{tree.folder("source"), true});
        const Mount etcMount(etc, Mount::Bind{"/etc", true});
        QVERIFY2(boundMount.mounted(), boundMount.output());
        QVERIFY2(etcMount.mounted(), etcMount.output());
        checkRefused({bound, bound + "/", etc, etc + "/hosts"});
        QVERIFY(exists("/etc/hosts"));
    }

    void neighboursOfProtectedPlacesAreNotProtected() {
        TestTree tree;
        const QList<QByteArray> paths{"/run/media/someone/USB/movie.mkv",
                                      "/run/user/1000/file",
                                      "/usrlocal",
                                      "/lib64x",
                                      "/etcetera/x",
                                      "/bootstrap.iso",
                                      "/devices",
                                      "/system",
                                      "/tmp/x",
                                      "/var/tmp/big.iso",
                                      "/opt/app.AppImage",
                                      "/media/disk/x",
                                      "/mnt/x",
                                      environment.home() + "/Downloads/setup.dmg",
                                      environment.home() + "/Documents/Temp",
                                      environment.home() + "x",
                                      tree.symlink("/etc/hosts", "link-to-hosts"),
                                      tree.symlink("/usr", "link-to-usr"),
                                      tree.symlink(environment.home(), "link-to-home")};
        for (const QByteArray &path : paths)
            QVERIFY2(!isProtectedLocation(path), path.constData());

        // A link that points into /usr goes to the Trash as a link; /usr is not touched.
        const QByteArray usr = identityOf("/usr");
        const QList<TrashResult> results = TrashService::moveToTrashNow(
            {tree.path("link-to-usr"), tree.path("link-to-hosts"), tree.path("link-to-home")});
        for (const TrashResult &result : results)
            QVERIFY(std::holds_alternative<TrashSuccess>(result));
        QCOMPARE(identityOf("/usr"), usr);
        QVERIFY(QFile::exists(u"/etc/hosts"_qs));
        QVERIFY(exists(environment.home()));
    }

    void anyUserIsRefusedWithTheSameReason() {
        if (::geteuid() != 0)
            QSKIP("dropping to another user needs root");
        TestTree tree(TreeReach::everyone);
        const User nobodyUser = unprivilegedUser(tree);
        const QByteArray home = nobodyUser.home;
        QList<QByteArray> paths{
            "/",   "/etc/hosts", "/usr/bin/env", "/lib/x", "/boot", home, home + "/../nobody-home/",
            "/var"};
        QList<QByteArray> before;
        for (const QByteArray &path : paths)
            before.append(identityOf(path));
        for (const User &user : {User{0, home, home}, nobodyUser}) {
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
