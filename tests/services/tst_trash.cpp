#include "Mount.h"
#include "Programs.h"
#include "TestTree.h"
#include "TrashInspection.h"
#include "services/TrashService.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

QByteArray parentOf(const QByteArray &path) {
    return path.left(path.lastIndexOf('/'));
}

// trash-cli writes names that are not UTF-8 with one replacement character per bad byte, Qt
// sometimes with one per sequence: compare with runs of them folded into one.
QString shown(QString text) {
    static const QRegularExpression runs(u"\uFFFD+"_qs);
    return text.replace(runs, u"\uFFFD"_qs);
}

QString shown(const QByteArray &path) {
    return shown(QString::fromUtf8(path));
}

// Puts one trashed item back with trash-restore, chosen by its original location, which proves
// that the item is in the Trash and recorded under that location. Returns where the tool put it
// (a name that is not UTF-8 comes back with replacement characters), or nothing.
std::optional<QByteArray> restoreWithTrashCli(const User &user, const QByteArray &path) {
    const QByteArray folder = parentOf(path);
    const QList<QByteArray> before = namesIn(folder);
    const QStringList arguments{QFile::decodeName(folder)};
    // trash-restore numbers the items trashed from below `folder`, with their original locations
    // read back from the .trashinfo files; without an answer it only lists them.
    static const QRegularExpression entry(
        u"^ *(\\d+) \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d (/.*?)$"
        u"(?=\\n *\\d+ \\d{4}-|\\nWhat file)"_qs,
        QRegularExpression::MultilineOption | QRegularExpression::DotMatchesEverythingOption);
    QList<int> choices;
    const QString listing = QString::fromUtf8(run(u"trash-restore"_qs, arguments, user, "\n").out);
    for (const auto &match : entry.globalMatch(listing)) {
        if (shown(match.captured(2)) == shown(path))
            choices.append(match.captured(1).toInt());
    }
    if (choices.size() != 1)
        return std::nullopt;
    run(u"trash-restore"_qs, arguments, user, QByteArray::number(choices.first()) + '\n');
    for (const QByteArray &name : namesIn(folder)) {
        if (!before.contains(name))
            return folder + '/' + name;
    }
    return std::nullopt;
}

// One batch of moves and the check that nothing was lost: every input that existed is either
// still at its path, unchanged, or in the Trash under its original path, from where
// trash-restore brings back the same bytes.
class Batch {
public:
    explicit Batch(User user) : m_user(std::move(user)) {}

    // `volumeTop` is the mount point whose own .Trash-0 receives the item, empty for the home
    // trash.
    void add(const QByteArray &path, bool shouldMove, const QByteArray &volumeTop = {}) {
        m_inputs.append({path, shouldMove, volumeTop, snapshotOf(path)});
    }

    QList<QByteArray> paths() const {
        QList<QByteArray> paths;
        for (const Input &input : m_inputs)
            paths.append(input.path);
        return paths;
    }

    void check(const QList<TrashResult> &results) {
        QCOMPARE(results.size(), m_inputs.size());
        QList<bool> moved;
        QList<std::optional<QByteArray>> trashPaths;
        for (qsizetype i = 0; i < results.size(); ++i) {
            const Input &input = m_inputs[i];
            const auto *success = std::get_if<TrashSuccess>(&results[i]);
            moved.append(success != nullptr);
            trashPaths.append(success ? success->trashPath : std::nullopt);
            if (!success) {
                QCOMPARE(std::get<TrashFailure>(results[i]).path, input.path);
                continue;
            }
            QCOMPARE(success->originalPath, input.path);
            const QByteArray trash = input.volumeTop.isEmpty() ? m_user.dataHome + "/Trash"
                                                               : input.volumeTop + "/.Trash-0";
            QVERIFY2(success->trashPath.value_or("").startsWith(trash + "/files/"),
                     qPrintable(shown(input.path)));
        }
        check(moved, trashPaths);
    }

    // `moved` is the per-input outcome that the program reported.
    void check(const QList<bool> &moved, const QList<std::optional<QByteArray>> &trashPaths = {}) {
        QCOMPARE(moved.size(), m_inputs.size());
        for (qsizetype i = 0; i < m_inputs.size(); ++i) {
            const Input &input = m_inputs[i];
            const QString shownPath = shown(input.path);
            const bool repeat = paths().indexOf(input.path) < i;
            QVERIFY2(moved[i] == (input.shouldMove && !repeat),
                     qPrintable(u"unexpected outcome for "_qs + shownPath));
            if (input.before.isEmpty() || repeat)
                continue; // nothing was there to lose
            const QByteArray now = snapshotOf(input.path);
            if (!now.isEmpty()) {
                QVERIFY2(now == input.before, qPrintable(u"changed in place: "_qs + shownPath));
                continue;
            }
            QVERIFY2(moved[i], qPrintable(u"gone but not moved: "_qs + shownPath));
            if (i < trashPaths.size() && trashPaths[i]) {
                QCOMPARE(recordedPath(*trashPaths[i]),
                         input.volumeTop.isEmpty() ? input.path
                                                   : input.path.mid(input.volumeTop.size() + 1));
            }
            const std::optional<QByteArray> restored = restoreWithTrashCli(m_user, input.path);
            QVERIFY2(restored && snapshotOf(*restored) == input.before,
                     qPrintable(u"trash-restore did not bring back "_qs + shownPath));
            if (*restored != input.path) {
                // Only a name that is not UTF-8 may come back spelt differently; put it back.
                QVERIFY(QString::fromUtf8(input.path).toUtf8() != input.path);
                QCOMPARE(::rename(restored->constData(), input.path.constData()), 0);
            }
            QCOMPARE(snapshotOf(input.path), input.before);
        }
    }

private:
    struct Input {
        QByteArray path;
        bool shouldMove;
        QByteArray volumeTop;
        QByteArray before;
    };
    User m_user;
    QList<Input> m_inputs;
};

bool chattr(const QByteArray &path, const char *flag) {
    return run(u"chattr"_qs, {QLatin1StringView(flag), QFile::decodeName(path)}).exitCode == 0;
}

} // namespace

class TrashTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    ScopedTestEnvironment environment;
    const User root{std::nullopt, environment.home(), environment.dataHome()};

private slots:
    void homeTrashBatchLosesNothing() {
        QVERIFY(TrashService::moveToTrashNow(QList<QByteArray>{}).isEmpty());
        TestTree tree;
        Batch batch(root);
        batch.add(writeDistinct(tree, "Downloads/setup.dmg", 4096), true);
        batch.add(tree.file("empty.txt"), true);
        // Names that are not UTF-8, each still told apart once shown with replacement marks, and
        // names that trip up quoting, escaping or the .trashinfo format.
        for (const QByteArray name :
             {"caf\xe9.iso", "\xff\xfe", "\xc0\xafoverlong.txt", "\xed\xa0\x80surrogate.txt",
              "trunc\xc3", "mixed \xe9t\xc3\xa9.mkv", "\xe9\n\"\\.dmg", "line\nbreak.mov",
              "\"double\" 'single'.pdf", "back\\slash%25.txt", "--help", " ", "\xe2\x80\xaegpj.exe",
              "[Trash Info]"})
            batch.add(writeDistinct(tree, "odd/" + name), true);
        // The longest name a folder takes leaves no room for ".trashinfo": refused, kept.
        batch.add(writeDistinct(tree, "odd/" + QByteArray(251, 'x') + ".iso"), false);
        // Two files of the same name from different folders meet in one Trash.
        batch.add(writeDistinct(tree, "a/same.bin"), true);
        batch.add(writeDistinct(tree, "b/same.bin"), true);
        batch.add(tree.symlink("nowhere", "dangling"), true);
        const QByteArray target = writeDistinct(tree, "target.bin");
        batch.add(tree.symlink(target, "link-to-target"), true);
        const QByteArray targetBefore = snapshotOf(target);
        writeDistinct(tree, "folder/inner.txt");
        writeDistinct(tree, "folder/caf\xe9/deeper.bin");
        batch.add(tree.path("folder"), true);
        batch.add(tree.path("missing.pdf"), false);
        const QByteArray twice = writeDistinct(tree, "twice.zip");
        batch.add(twice, true);
        batch.add(twice, true); // gone by the second time
        // Every spelling of a protected place is in tst_protectedlocations; one rides along here.
        batch.add("/tmp/../etc/hosts", false);

        const QList<QByteArray> paths = batch.paths();
        const QList<TrashResult> results = TrashService().moveToTrash(paths).result();
        const auto errorOf = [&](const QByteArray &path) {
            const auto *failure = std::get_if<TrashFailure>(&results[paths.lastIndexOf(path)]);
            return failure ? failure->error : QString();
        };
        QVERIFY(errorOf(tree.path("missing.pdf"))
                    .startsWith(u"Failed to move 'missing.pdf' to Trash: "_qs));
        QVERIFY(errorOf(twice).startsWith(u"Failed to move 'twice.zip' to Trash: "_qs));
        QVERIFY(errorOf("/tmp/../etc/hosts").endsWith(u"to Trash: Protected system location"_qs));

        batch.check(results);
        QCOMPARE(snapshotOf(target), targetBefore); // the link went, what it points at stays
    }

    // A second ext4 takes items into its own .Trash-0 and keeps immutable or append-only ones;
    // tmpfs and a read-only mount have no usable trash and refuse.
    void otherFileSystemsUseTheirOwnTrashOrRefuse() {
        if (::geteuid() != 0)
            QSKIP("mounting a second file system needs root");
        TestTree tree;
        const QByteArray top = tree.path("ext4");
        Mount ext4(top, true), tmpfs(tree.path("tmpfs"), false), readOnly(tree.path("ro"), true);
        for (const Mount *mount : {&ext4, &tmpfs, &readOnly})
            QVERIFY2(mount->mounted(), mount->output());
        const QByteArray onReadOnly = writeDistinct(tree, "ro/kept.iso");
        QVERIFY2(readOnly.remountReadOnly(), readOnly.output());

        Batch batch(root);
        const QByteArray movie = writeDistinct(tree, "ext4/movie.mkv", 1000);
        batch.add(movie, true, top);
        batch.add(writeDistinct(tree, "ext4/caf\xe9 \xff.iso"), true, top);
        batch.add(writeDistinct(tree, "ext4/line\nbreak.txt"), true, top);
        writeDistinct(tree, "ext4/folder/a.bin");
        batch.add(tree.path("ext4/folder"), true, top);
        batch.add(tree.symlink("nowhere", "ext4/dangling"), true, top);
        const QByteArray locked = writeDistinct(tree, "ext4/locked.bin");
        const QByteArray sealed = tree.path("ext4/sealed");
        const QByteArray inSealed = writeDistinct(tree, "ext4/sealed/inside.bin");
        const QByteArray appendOnly = writeDistinct(tree, "ext4/append-only.log");
        QVERIFY(chattr(locked, "+i") && chattr(sealed, "+i") && chattr(appendOnly, "+a"));
        batch.add(locked, false, top);
        batch.add(inSealed, false, top);
        batch.add(appendOnly, false, top);
        batch.add(movie, true, top);
        batch.add(tree.path("ext4/missing"), false, top);
        batch.add(writeDistinct(tree, "tmpfs/clip.mov"), false, tree.path("tmpfs"));
        batch.add(onReadOnly, false, tree.path("ro"));

        const QList<TrashResult> results = TrashService::moveToTrashNow(batch.paths());
        chattr(locked, "-i");
        chattr(sealed, "-i");
        chattr(appendOnly, "-a");
        batch.check(results);
    }

    void anUnprivilegedUserMovesOnlyWhatItMay() {
        if (::geteuid() != 0)
            QSKIP("dropping to another user needs root");
        TestTree tree(TreeReach::everyone);
        const User user = unprivilegedUser(tree);
        Batch batch(user);
        const QByteArray own = writeDistinct(tree, "nobody-home/mine.iso");
        const QByteArray ownOdd = writeDistinct(tree, "nobody-home/caf\xe9\n.iso");
        QDir().mkpath(QFile::decodeName(user.dataHome));
        run(u"chown"_qs, {u"-R"_qs, u"65534:65534"_qs, QFile::decodeName(user.home)});
        batch.add(own, true);
        batch.add(ownOdd, true);
        // A folder it may not write to: the file cannot leave it.
        batch.add(writeDistinct(tree, "owned-by-root/keep.iso"), false);
        // A sticky shared folder: another user's file stays.
        ::chmod(tree.folder("shared").constData(), 01777);
        batch.add(writeDistinct(tree, "shared/roots.iso"), false);
        // A protected place, as this user: tst_protectedlocations.

        // Arguments cannot carry bytes that are not UTF-8 through QProcess: xargs reads them
        // from a NUL-separated list instead.
        const ProcessOutput output =
            run(u"xargs"_qs,
                {u"-0"_qs, reachableCopy(QStringLiteral(RAVELINTH_EXECUTABLE)), u"trash"_qs,
                 u"--json"_qs},
                user, batch.paths().join('\0') + '\0');
        QCOMPARE(output.exitCode, 123); // xargs: the command exited with 1, some were not moved
        const QJsonArray results = QJsonDocument::fromJson(output.out).array();
        QList<bool> moved;
        for (const QJsonValue &result : results) {
            moved.append(result[u"success"].toBool());
            if (!moved.last())
                QVERIFY(result[u"error"].toString().startsWith(u"Failed to move '"_qs));
        }
        batch.check(moved);
    }
};

QTEST_GUILESS_MAIN(TrashTest)
#include "tst_trash.moc"
