#include "Mount.h"
#include "Programs.h"
#include "TestTree.h"
#include "TrashInspection.h"
#include "platform/TrashRestore.h"
#include "services/MoveJournal.h"
#include "services/TrashService.h"
#include "services/TrashUndo.h"

#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

// What must come back exactly: the snapshot (type, mode, bytes, link targets, the same inside a
// folder) and the modification time.
QByteArray fullSnapshot(const QByteArray &path) {
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return {};
    return snapshotOf(path) + " mtime=" + QByteArray::number(qint64(info.st_mtim.tv_sec)) + '.' +
           QByteArray::number(qint64(info.st_mtim.tv_nsec));
}

void setOldTime(const QByteArray &path) {
    const timespec times[2] = {{1500000000, 123456789}, {1500000000, 123456789}};
    QVERIFY(::utimensat(AT_FDCWD, path.constData(), times, AT_SYMLINK_NOFOLLOW) == 0);
}

QStringList errorsOf(const UndoOutcome &outcome) {
    QStringList errors;
    for (const RestoreResult &result : outcome.results)
        errors.append(result.restored ? QString() : result.error);
    return errors;
}

} // namespace

class TrashUndoTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    ScopedTestEnvironment environment;

    // Moves every path in one batch, then undoes it, and checks that each came back as it was.
    void moveAndUndo(const QList<QByteArray> &paths) {
        QList<QByteArray> before;
        for (const QByteArray &path : paths)
            before.append(fullSnapshot(path));
        MoveJournal journal(QFile::decodeName(environment.home()) + u"/journal.jsonl"_qs);
        TrashBatch batch(&journal);
        for (const QByteArray &path : paths) {
            const TrashResult result = batch.move(path);
            const auto *success = std::get_if<TrashSuccess>(&result);
            QVERIFY2(success && success->journalError.isEmpty(), path.constData());
            QVERIFY(!exists(path));
        }
        // A new journal object on the same file: what a program started again would read.
        MoveJournal afterRestart(journal.filePath());
        const std::optional<UndoOutcome> outcome = trashundo::undoLatestBatchNow(afterRestart);
        QVERIFY(outcome);
        QCOMPARE(outcome->batchId, batch.id());
        QCOMPARE(errorsOf(*outcome), QStringList(paths.size(), QString()));
        for (qsizetype i = 0; i < paths.size(); ++i) {
            QCOMPARE(fullSnapshot(paths[i]), before[i]);
            QVERIFY(!exists(platform::trashInfoPathFor(outcome->results[i].trashPath)));
        }
        QVERIFY(!afterRestart.latestBatchToUndo());
    }

private slots:
    void undoBringsBackExactlyWhatWasMoved() {
        TestTree tree;
        const QList<QByteArray> paths{writeDistinct(tree, "plain.bin", 5000),
                                      writeDistinct(tree, "caf\xe9 \xff.iso"),
                                      tree.symlink("../elsewhere", "link"), tree.path("folder")};
        writeDistinct(tree, "folder/inner/deep.txt");
        tree.symlink("deep.txt", "folder/inner/to-deep");
        ::chmod(paths[0].constData(), 0640);
        for (const QByteArray &path : paths)
            setOldTime(path);
        moveAndUndo(paths);
    }

    // The volume's own trash folder, on a second file system; and the data copied back when the
    // place to restore to is on another file system than the trash.
    void undoWorksOnASecondFileSystemAndAcrossThem() {
        if (::geteuid() != 0)
            QSKIP("mounting a second file system needs root");
        TestTree tree;
        Mount ext4(tree.path("ext4"), true);
        QVERIFY2(ext4.mounted(), ext4.output());
        const QList<QByteArray> paths{writeDistinct(tree, "ext4/movie.mkv", 3000),
                                      tree.path("ext4/album")};
        writeDistinct(tree, "ext4/album/song \xff.flac");
        for (const QByteArray &path : paths)
            setOldTime(path);
        moveAndUndo(paths);

        const QByteArray item = writeDistinct(tree, "ext4/.Trash-0/files/report.pdf");
        tree.symlink("report.pdf", "ext4/.Trash-0/files/shortcut");
        setOldTime(item);
        const QByteArray before = fullSnapshot(item);
        const QByteArray home = tree.path("home-side/report.pdf");
        const platform::RestoreAttempt copied = platform::restoreFromTrash(
            {item, platform::trashInfoPathFor(item), home, {}}, std::nullopt);
        QVERIFY2(copied.restored, qPrintable(copied.error));
        QCOMPARE(fullSnapshot(home), before);
        QVERIFY(!exists(item));
        const QByteArray link = tree.path("ext4/.Trash-0/files/shortcut");
        QVERIFY(platform::restoreFromTrash({link, {}, tree.path("home-side/shortcut"), {}},
                                           std::nullopt)
                    .restored);
        QCOMPARE(snapshotOf(tree.path("home-side/shortcut")), QByteArray("120777:report.pdf"));
    }

    // A place taken again keeps what is there now, and the item stays in the Trash; an item
    // gone from the Trash says so; a missing folder above is made again.
    void restoringNeverReplacesAnything() {
        TestTree tree;
        const QByteArray taken = writeDistinct(tree, "docs/taken.txt");
        const QByteArray gone = writeDistinct(tree, "docs/gone.txt");
        const QByteArray nested = writeDistinct(tree, "docs/sub/nested.txt");
        const QByteArray nestedBefore = fullSnapshot(nested);
        MoveJournal journal(QFile::decodeName(tree.path("journal.jsonl")));
        TrashBatch batch(&journal);
        QList<QByteArray> trashed;
        for (const QByteArray &path : {taken, gone, nested})
            trashed.append(*std::get<TrashSuccess>(batch.move(path)).trashPath);
        const QByteArray newcomer = writeDistinct(tree, "docs/taken.txt");
        const QByteArray newcomerBefore = fullSnapshot(newcomer);
        const QByteArray trashedBefore = fullSnapshot(trashed[0]);
        QVERIFY(::unlink(trashed[1].constData()) == 0);
        QVERIFY(::rmdir(tree.path("docs/sub").constData()) == 0);

        const std::optional<UndoOutcome> outcome = trashundo::undoLatestBatchNow(journal);
        QVERIFY(outcome);
        QCOMPARE(errorsOf(*outcome),
                 (QStringList{QString(),
                              u"Failed to restore 'gone.txt': It is no longer in the Trash"_qs,
                              u"Failed to restore 'taken.txt': A file already exists at "_qs +
                                  QFile::decodeName(taken)}));
        QCOMPARE(fullSnapshot(newcomer), newcomerBefore);
        QCOMPARE(fullSnapshot(trashed[0]), trashedBefore);
        QVERIFY(exists(platform::trashInfoPathFor(trashed[0])));
        QCOMPARE(fullSnapshot(nested), nestedBefore);
        // Undone once, even with failures: the next undo reaches an older batch, here none.
        QVERIFY(!trashundo::undoLatestBatchNow(journal));
    }

    // A last line cut short by a crash is skipped, and the next record starts on its own line;
    // old batches go when a new one begins.
    void theJournalSurvivesATornLineAndStaysSmall() {
        TestTree tree;
        const QString path = QFile::decodeName(tree.path("state/moves.jsonl"));
        MoveJournal journal(path);
        const QDateTime now = QDateTime::currentDateTimeUtc();
        const JournalItem item{"/a/caf\xe9", "/t/files/caf\xe9", 1, 2, 3};
        QVERIFY(!journal.record(u"old"_qs, now.addDays(-31), item));
        QVERIFY(!journal.record(u"kept"_qs, now.addDays(-1), item));
        QFile file(path);
        QVERIFY(file.open(QIODevice::Append));
        file.write("{\"batch\":\"torn\",\"time\":\"2026-");
        file.close();
        QCOMPARE(journal.batches().size(), 2);
        QCOMPARE(journal.latestBatchToUndo()->id, u"kept"_qs);
        QCOMPARE(journal.latestBatchToUndo()->items, QList<JournalItem>{item});

        QVERIFY(!journal.record(u"new"_qs, now, item));
        QStringList ids;
        for (const JournalBatch &batch : journal.batches())
            ids.append(batch.id);
        QCOMPARE(ids, (QStringList{u"kept"_qs, u"new"_qs}));
        QFileInfo info(path);
        QCOMPARE(info.permissions() & (QFile::ReadOther | QFile::ReadGroup), QFile::Permissions());
    }

    // Items moved by another program are found by where they came from; the newest wins.
    void restoreByPathFindsWhatAnyProgramMoved() {
        TestTree tree;
        const QByteArray path = tree.path("notes.txt");
        writeDistinct(tree, "notes.txt", 10);
        QCOMPARE(run(u"gio"_qs, {u"trash"_qs, QFile::decodeName(path)}).exitCode, 0);
        QTest::qWait(1100); // deletion dates are kept in whole seconds
        const QByteArray newer = writeDistinct(tree, "notes.txt", 20);
        const QByteArray newerSnapshot = fullSnapshot(newer);
        QCOMPARE(run(u"gio"_qs, {u"trash"_qs, QFile::decodeName(path)}).exitCode, 0);
        QVERIFY(!exists(path));
        const RestoreResult result = trashundo::restoreNewestNow(path);
        QVERIFY2(result.restored, qPrintable(result.error));
        QCOMPARE(fullSnapshot(path), newerSnapshot);
        QCOMPARE(trashundo::restoreNewestNow(tree.path("never-there")).error,
                 u"Failed to restore 'never-there': It is not in the Trash"_qs);
    }

    // One `trash` command is one batch; `restore --last` in a later process puts it all back.
    void theCommandLineUndoesItsLastCommand() {
        TestTree tree;
        const QByteArray a = writeDistinct(tree, "a.bin");
        const QByteArray b = writeDistinct(tree, "sub/b.bin");
        const QByteArray before = fullSnapshot(a) + fullSnapshot(b);
        const ProcessOutput moved = runRavelinth({"trash", a, b});
        QVERIFY2(moved.exitCode == 0, moved.out + moved.err);
        const ProcessOutput restored = runRavelinth({"restore", "--last"});
        QCOMPARE(restored.exitCode, 0);
        QCOMPARE(restored.out, "restored: " + b + "\nrestored: " + a + '\n');
        QCOMPARE(fullSnapshot(a) + fullSnapshot(b), before);

        const ProcessOutput nothing = runRavelinth({"restore", "--last"});
        QCOMPARE(nothing.exitCode, 1);
        QCOMPARE(nothing.err,
                 QByteArray("ravelinth restore: there is no move to the Trash to undo\n"));
        const ProcessOutput missing = runRavelinth({"restore", "--json", a});
        QCOMPARE(missing.exitCode, 1);
        QCOMPARE(missing.out, "[{\"path\":\"" + a +
                                  "\",\"success\":false,\"error\":\"Failed to restore 'a.bin': It "
                                  "is not in the Trash\"}]\n");
        // Forms that name no single place are refused, and the item stays in the Trash.
        QCOMPARE(runRavelinth({"trash", a}).exitCode, 0);
        for (const QByteArray &form :
             {QByteArray(), QByteArray("."), QByteArray(".."), a + '/', a + "/.", a + "/.."}) {
            const ProcessOutput refused = runRavelinth({"restore", form});
            QCOMPARE(refused.exitCode, 1);
            QVERIFY2(refused.out.endsWith("': not a path an item can be put back at\n"),
                     refused.out.constData());
        }
        QVERIFY(!exists(a));
        QCOMPARE(runRavelinth({"restore", a}).exitCode, 0);
        QCOMPARE(fullSnapshot(a) + fullSnapshot(b), before);
        QCOMPARE(runRavelinth({"restore"}).exitCode, 2);
        QCOMPARE(runRavelinth({"restore", "--last", a}).exitCode, 2);
    }
};

QTEST_GUILESS_MAIN(TrashUndoTest)
#include "tst_trashundo.moc"
