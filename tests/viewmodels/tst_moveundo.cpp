#include "ScannedModel.h"
#include "TestTree.h"
#include "TrashInspection.h"
#include "viewmodels/CategoryStatsModel.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/FileOperations.h"
#include "viewmodels/MoveUndo.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QSignalSpy>
#include <QtTest>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

QList<QByteArray> listedPaths(const RavelinthViewModel &model) {
    QList<QByteArray> paths;
    for (const FileItem &file : model.files())
        paths.append(file.path);
    return paths;
}

qint64 countedFiles(const RavelinthViewModel &model) {
    qint64 count = 0;
    for (const CategoryStats &stats : model.categoryStats())
        count += stats.fileCount;
    return count;
}

} // namespace

// A move from the window is announced with its size, and undone from the journal: the files
// come back on disk and, when the scan would keep them, in the list; also after a restart.
class MoveUndoTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    test::ScopedTestEnvironment environment;

private slots:
    void aMoveIsUndoneIntoTheListAndAfterARestart() {
        TestTree tree;
        const QByteArray big = tree.file("big.iso", 3 * MiB);
        const QByteArray small = tree.file("small.zip", 2 * MiB);
        const QByteArray kept = tree.file("kept.mov", 1 * MiB);
        {
            RavelinthViewModel model;
            model.preferences()->setConfirmBeforeDelete(false);
            MoveUndo &undo = *model.undo();
            QVERIFY(scanned(model, tree.root()));
            QTRY_COMPARE(model.files().size(), 3);

            model.operations()->requestMoveToTrash(idsOf(model, {big, small}));
            QTRY_COMPARE(listedPaths(model), QList<QByteArray>{kept});
            QCOMPARE(undo.noticeText(), u"Moved 2 files (5.2 MB) to the Trash"_qs);
            QVERIFY(undo.canUndo());
            QVERIFY(!exists(big) && !exists(small));

            undo.undo();
            QTRY_VERIFY(!undo.isUndoing());
            QVERIFY(exists(big) && exists(small));
            QCOMPARE(listedPaths(model), (QList<QByteArray>{big, small, kept}));
            QCOMPARE(undo.noticeText(), QString());
            QTRY_VERIFY(!undo.canUndo());
            QTRY_COMPARE(countedFiles(model), 3);

            model.operations()->requestMoveToTrash(idsOf(model, {kept}));
            // The file leaves the disk before the window hears of it.
            QTRY_COMPARE(undo.noticeText(), u"Moved 1 file (1 MB) to the Trash"_qs);
            QVERIFY(!exists(kept));
        }
        // A new window, as after a restart, finds the move in the journal; with no scan shown
        // the file comes back on disk only.
        RavelinthViewModel later;
        QTRY_VERIFY(later.undo()->canUndo());
        QSignalSpy failed(later.undo(), &MoveUndo::failed);
        later.undo()->undo();
        QTRY_VERIFY(!later.undo()->isUndoing());
        QVERIFY(exists(kept));
        QVERIFY(later.files().isEmpty());
        QTRY_VERIFY(!later.undo()->canUndo());
        later.undo()->undo();
        QTRY_COMPARE(failed.size(), 1);
        QCOMPARE(failed.at(0).at(0).toString(), u"There is no move to the Trash to undo."_qs);
        later.preferences()->setConfirmBeforeDelete(true);
    }
};

QTEST_MAIN(MoveUndoTest)
#include "tst_moveundo.moc"
