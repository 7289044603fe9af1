#include "Programs.h"
#include "ScannedModel.h"
#include "TestTree.h"
#include "TrashInspection.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/FileOperations.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QSignalSpy>
#include <QtTest>

#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

bool chattr(const QByteArray &path, const char *flag) {
    return test::run(u"chattr"_qs, {QLatin1StringView(flag), QFile::decodeName(path)}).exitCode ==
           0;
}

} // namespace

// The question before a move to the Trash and the report after one: nothing moves before a
// confirmation, a cancel changes nothing, a confirmation moves what was asked about, and files
// that could not be moved are reported with the platform's reason.
class TrashConfirmationTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    test::ScopedTestEnvironment environment;

    // Seven files: holiday.mov 7 MiB, then 6, 5, ... down to notes.pdf at 1 MiB.
    QList<QByteArray> makeFiles(TestTree &tree) {
        const char *names[] = {"holiday.mov", "disk.iso", "backup.zip", "album.flac",
                               "photo.tiff",  "game.dmg", "notes.pdf"};
        QList<QByteArray> paths;
        for (int i = 0; i < 7; ++i)
            paths.append(tree.file(names[i], (7 - i) * MiB));
        return paths;
    }

private slots:
    // The sheet warns about the space only for files whose data has another name.
    void theQuestionCountsFilesWithOtherNames() {
        TestTree tree;
        const QByteArray movie = tree.file("movie.mov", 3 * MiB);
        QCOMPARE(::link(movie.constData(), tree.path("movie-too.mov").constData()), 0);
        tree.file("alone.iso", 2 * MiB);
        RavelinthViewModel model;
        model.preferences()->setConfirmBeforeDelete(true);
        QVERIFY(scanned(model, tree.root()));
        QTRY_COMPARE(model.fileList()->rowCount(), 3);
        FileOperations &operations = *model.operations();
        model.selectAll();
        operations.requestMoveSelectedToTrash();
        QCOMPARE(operations.pendingCount(), 3);
        QCOMPARE(operations.pendingLinkedCount(), 2);
        operations.cancelPendingMove();
        operations.requestMoveToTrash(idsOf(model, {tree.path("alone.iso")}));
        QCOMPARE(operations.pendingLinkedCount(), 0);
        operations.requestMoveToTrash(idsOf(model, {tree.path("movie-too.mov")}));
        QCOMPARE(operations.pendingLinkedCount(), 1);
        operations.cancelPendingMove();
        QCOMPARE(operations.pendingLinkedCount(), 0);
    }

    void nothingMovesUntilConfirmedThenExactlyWhatWasShown() {
        TestTree tree;
        const QList<QByteArray> paths = makeFiles(tree);
        RavelinthViewModel model;
        model.preferences()->setConfirmBeforeDelete(true);
        QVERIFY(scanned(model, tree.root()));
        FileOperations &operations = *model.operations();
        QSignalSpy moved(&operations, &FileOperations::filesMoved);

        // Nothing selected: nothing to ask about.
        operations.requestMoveSelectedToTrash();
        QVERIFY(!operations.hasPendingMove());

        // All seven selected: the question names the first five, largest first as listed.
        model.selectAll();
        operations.requestMoveSelectedToTrash();
        QVERIFY(operations.hasPendingMove());
        QCOMPARE(operations.pendingCount(), 7);
        QCOMPARE(operations.pendingSize(), 28 * MiB);
        QCOMPARE(operations.pendingNames(),
                 QStringList({u"holiday.mov"_qs, u"disk.iso"_qs, u"backup.zip"_qs, u"album.flac"_qs,
                              u"photo.tiff"_qs}));
        QTest::qWait(300);
        QCOMPARE(moved.size(), 0);
        QCOMPARE(model.files().size(), 7);
        for (const QByteArray &path : paths)
            QVERIFY(exists(path));

        // Cancel: every file stays, listed and still selected.
        operations.cancelPendingMove();
        QVERIFY(!operations.hasPendingMove());
        QTest::qWait(300);
        QCOMPARE(moved.size(), 0);
        QCOMPARE(model.files().size(), 7);
        QCOMPARE(model.selectedCount(), 7);
        for (const QByteArray &path : paths)
            QVERIFY(exists(path));

        // Two named files; the selection changes while the question is open, and the
        // confirmation still moves the two that were asked about.
        operations.requestMoveToTrash(idsOf(model, {paths[4], paths[1]}));
        QCOMPARE(operations.pendingCount(), 2);
        QCOMPARE(operations.pendingSize(), 9 * MiB);
        QCOMPARE(operations.pendingNames(), QStringList({u"photo.tiff"_qs, u"disk.iso"_qs}));
        model.setSelectedFiles({});
        operations.confirmPendingMove();
        QVERIFY(!operations.hasPendingMove());
        QVERIFY(moved.wait(10000));
        QCOMPARE(model.files().size(), 5);
        for (int i = 0; i < paths.size(); ++i)
            QCOMPARE(exists(paths[i]), i != 1 && i != 4);
        QVERIFY(!operations.hasTrashReport());

        // A confirmation with nothing pending does nothing.
        operations.confirmPendingMove();
        QTest::qWait(300);
        QCOMPARE(moved.size(), 1);
    }

    void withoutConfirmationTheMoveHappensAtOnce() {
        TestTree tree;
        const QList<QByteArray> paths = makeFiles(tree);
        RavelinthViewModel model;
        model.preferences()->setConfirmBeforeDelete(false);
        QVERIFY(scanned(model, tree.root()));
        FileOperations &operations = *model.operations();
        QSignalSpy moved(&operations, &FileOperations::filesMoved);

        model.setSelectedFiles({model.files()[0].id, model.files()[6].id});
        operations.requestMoveSelectedToTrash();
        QVERIFY(!operations.hasPendingMove());
        QVERIFY(moved.wait(10000));
        QCOMPARE(model.files().size(), 5);
        QCOMPARE(model.selectedCount(), 0);
        QVERIFY(!exists(paths[0]) && !exists(paths[6]) && exists(paths[3]));
    }

    void aLockedFileIsReportedAndTheOthersMove() {
        TestTree tree;
        const QByteArray sealed = tree.file("sealed/locked.iso", 4 * MiB);
        const QByteArray first = tree.file("first.mov", 3 * MiB);
        const QByteArray second = tree.file("second.zip", 2 * MiB);
        QVERIFY2(chattr(sealed, "+i"), "chattr +i failed: the test needs root on a file system "
                                       "with attributes");
        // Whatever check fails, the file does not stay behind undeletable.
        const auto unlock = qScopeGuard([&] { chattr(sealed, "-i"); });
        RavelinthViewModel model;
        model.preferences()->setConfirmBeforeDelete(true);
        QVERIFY(scanned(model, tree.root()));
        FileOperations &operations = *model.operations();
        QSignalSpy moved(&operations, &FileOperations::filesMoved);
        QSignalSpy reported(&operations, &FileOperations::trashReportChanged);

        model.selectAll();
        operations.requestMoveSelectedToTrash();
        operations.confirmPendingMove();
        QVERIFY(moved.wait(10000));
        QVERIFY(!exists(first) && !exists(second) && exists(sealed));
        QCOMPARE(model.files().size(), 1);
        QCOMPARE(model.files()[0].path, sealed);
        QCOMPARE(model.selectedCount(), 0);

        QCOMPARE(reported.size(), 1);
        QVERIFY(operations.hasTrashReport());
        QCOMPARE(operations.reportMovedCount(), 2);
        const QVariantList failures = operations.reportFailures();
        QCOMPARE(failures.size(), 1);
        const QVariantMap failure = failures[0].toMap();
        QCOMPARE(failure[u"name"_qs].toString(), u"locked.iso"_qs);
        QCOMPARE(failure[u"path"_qs].toString(), QString::fromUtf8(sealed));
        const QString reason = failure[u"reason"_qs].toString();
        QVERIFY2(reason.contains(u"not permitted"_qs, Qt::CaseInsensitive), qPrintable(reason));
        // The reason alone: the list names the file beside it.
        QVERIFY2(!reason.startsWith(u"Failed to move"_qs), qPrintable(reason));
    }
};

QTEST_MAIN(TrashConfirmationTest)
#include "tst_trashconfirmation.moc"
