#include "ScannedModel.h"
#include "TestTree.h"
#include "TrashInspection.h"
#include "viewmodels/FileOperations.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QtTest>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

// Stands in for the desktop: writes down every address it is asked to open.
class UrlRecorder : public QObject {
    Q_OBJECT

public:
    QList<QUrl> opened;

public slots:
    void open(const QUrl &url) { opened.append(url); }
};

QByteArray bytesOf(const QUrl &url) {
    return QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
}

} // namespace

// The context menu's actions reach the desktop with each file's exact path bytes, including a
// folder and a name that are not UTF-8.
class FileOperationsTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    test::ScopedTestEnvironment environment;
    test::TestTree tree;
    UrlRecorder recorder;
    QByteArray oddPath;
    QByteArray plainPath;

    QString idOf(const RavelinthViewModel &model, const QByteArray &path) {
        return idsOf(model, {path}).value(0);
    }

private slots:
    void initTestCase() {
        // No session bus: revealing falls back to opening the first item's folder.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
        QDesktopServices::setUrlHandler(u"file"_qs, &recorder, "open");
        oddPath = tree.file("d\xff"
                            "r/caf\xe9.mov",
                            300'000'000);
        plainPath = tree.file("plain/disk.iso", 200'000'000);
    }
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(u"file"_qs); }
    void init() { recorder.opened.clear(); }

    void existingKeepsListOrderAndDropsUnknownIds() {
        RavelinthViewModel model;
        QVERIFY(scanned(model, tree.root()));
        FileOperations &actions = *model.operations();
        const QString odd = idOf(model, oddPath);
        const QString plain = idOf(model, plainPath);
        QVERIFY(!odd.isEmpty() && !plain.isEmpty());
        // The scan lists the larger file first.
        QCOMPARE(actions.existing({plain, QUuid::createUuid().toString(), odd}),
                 QStringList({odd, plain}));
        QCOMPARE(actions.existing({}), QStringList());
    }

    void openAndRevealUseTheExactBytes() {
        RavelinthViewModel model;
        QVERIFY(scanned(model, tree.root()));
        FileOperations &actions = *model.operations();
        const QString odd = idOf(model, oddPath);

        actions.open({odd});
        QCOMPARE(recorder.opened.size(), 1);
        QCOMPARE(bytesOf(recorder.opened[0]), oddPath);

        recorder.opened.clear();
        actions.reveal({odd, idOf(model, plainPath)});
        QTRY_COMPARE(recorder.opened.size(), 1);
        QCOMPARE(bytesOf(recorder.opened[0]), tree.path("d\xff"
                                                        "r"));
    }

    void copyPathTakesOnlyTheFirstFile() {
        RavelinthViewModel model;
        QVERIFY(scanned(model, tree.root()));
        FileOperations &actions = *model.operations();
        QGuiApplication::clipboard()->setText(u"before"_qs);
        actions.copyPath({});
        QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_qs);
        actions.copyPath({idOf(model, plainPath), idOf(model, oddPath)});
        QCOMPARE(QGuiApplication::clipboard()->text(), QString::fromUtf8(plainPath));
        // A name that is not UTF-8 is copied in a form that still names its bytes.
        actions.copyPath({idOf(model, oddPath)});
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"$'"_qs + QString::fromUtf8(tree.root()) + u"/d\\xffr/caf\\xe9.mov'"_qs);
    }

    // The last test: it moves the files away.
    void zMoveToTrashMovesEachFileAndLeavesTheRestSelected() {
        RavelinthViewModel model;
        QVERIFY(scanned(model, tree.root()));
        FileOperations &actions = *model.operations();
        model.selectAll();
        QTRY_COMPARE(model.selectedCount(), 2);
        actions.moveToTrash({idOf(model, oddPath)});
        QTRY_COMPARE(model.files().size(), 1);
        QCOMPARE(model.selectedCount(), 1);
        QVERIFY(!exists(oddPath) && exists(plainPath));
    }
};

QTEST_MAIN(FileOperationsTest)
#include "tst_fileoperations.moc"
