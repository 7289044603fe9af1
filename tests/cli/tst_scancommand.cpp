#include "Mount.h"
#include "Programs.h"
#include "TestTree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <csignal>
#include <fcntl.h>
#include <pty.h>
#include <unistd.h>

using namespace ravelinth::test;

namespace {

constexpr qint64 MiB = 1024 * 1024;

QJsonObject scanJson(const QList<QByteArray> &arguments) {
    const ProcessOutput output =
        runRavelinth(QList<QByteArray>{"scan"} + arguments + QList<QByteArray>{"--json"});
    if (output.exitCode != 0)
        qFatal("scan failed: %s", output.err.constData());
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(output.out, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("not JSON: %s", qPrintable(error.errorString()));
    return document.object();
}

// What a person at a terminal sees of the program's standard error: it is the terminal, so the
// live progress line is drawn.
QByteArray stderrOnTerminal(const QList<QByteArray> &arguments) {
    int terminal = -1;
    int device = -1;
    if (::openpty(&terminal, &device, nullptr, nullptr, nullptr) != 0)
        qFatal("no pseudo-terminal");
    ::fcntl(terminal, F_SETFL, O_NONBLOCK);
    QStringList list;
    for (const QByteArray &argument : arguments)
        list.append(QFile::decodeName(argument));
    QProcess process;
    process.setChildProcessModifier([device] { ::dup2(device, STDERR_FILENO); });
    process.start(QStringLiteral(RAVELINTH_EXECUTABLE), list);
    QByteArray seen;
    auto drain = [&] {
        char buffer[4096];
        for (ssize_t n; (n = ::read(terminal, buffer, sizeof buffer)) > 0;)
            seen.append(buffer, n);
    };
    while (!process.waitForFinished(20))
        drain();
    drain();
    ::close(device);
    ::close(terminal);
    return seen;
}

// True once the process `pid` handles Ctrl+C itself rather than dying of it.
bool catchesInterrupt(qint64 pid) {
    QFile status(u"/proc/"_qs + QString::number(pid) + u"/status"_qs);
    if (!status.open(QIODevice::ReadOnly))
        return false;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("SigCgt:"))
            return (line.mid(7).trimmed().toULongLong(nullptr, 16) >> (SIGINT - 1)) & 1;
    }
    return false;
}

} // namespace

class ScanCommandTest : public QObject {
    Q_OBJECT

private slots:
    void jsonCarriesTheWholeResult() {
        TestTree tree;
        const qint64 may2021 = 1620000000; // 2021-05-03T00:00:00Z
        tree.file("Downloads/setup.dmg", 300 * MiB, may2021);
        tree.file("Movies/trip.MP4", 150 * MiB, may2021);
        tree.file("notes.txt", 12);
        tree.file(".hidden.zip", 500 * MiB);

        const QJsonObject root = scanJson({tree.root()});
        QCOMPARE(root.value(u"scannedPath").toString(), QFile::decodeName(tree.root()));
        QCOMPARE(root.value(u"filesScanned").toInteger(), 3);
        QCOMPARE(root.value(u"bytesScanned").toInteger(), 450 * MiB + 12);
        QCOMPARE(root.value(u"totalSize").toInteger(), 450 * MiB);
        QVERIFY(root.value(u"duration").isDouble());
        const QDateTime timestamp =
            QDateTime::fromString(root.value(u"timestamp").toString(), Qt::ISODateWithMs);
        QVERIFY(root.value(u"timestamp").toString().endsWith(u'Z'));
        QVERIFY(qAbs(timestamp.secsTo(QDateTime::currentDateTimeUtc())) < 3600);

        const QJsonArray files = root.value(u"files").toArray();
        QCOMPARE(files.size(), 2);
        const QJsonObject dmg = files[0].toObject();
        QCOMPARE(dmg.value(u"path").toString(),
                 QFile::decodeName(tree.path("Downloads/setup.dmg")));
        QCOMPARE(dmg.value(u"size").toInteger(), 300 * MiB);
        QCOMPARE(dmg.value(u"modifiedDate").toString(), u"2021-05-03T00:00:00.000Z"_qs);
        QCOMPARE(dmg.value(u"category").toString(), u"Installers"_qs);
        QCOMPARE(files[1].toObject().value(u"category").toString(), u"Videos"_qs);

        // Every category, empty ones too, in the fixed order.
        QStringList stats;
        for (const QJsonValue &entry : root.value(u"categoryStats").toArray())
            stats << entry[u"category"].toString() + u' ' +
                         QString::number(entry[u"fileCount"].toInteger()) + u' ' +
                         QString::number(entry[u"totalSize"].toInteger());
        QCOMPARE(stats.join(u','), u"Installers 1 314572800,Archives 0 0,Videos 1 157286400,"
                                   u"Images 0 0,Documents 0 0,Audio 0 0,Applications 0 0,"
                                   u"Cache 0 0,Other 0 0"_qs);

        // --hidden and a fractional threshold.
        const QJsonObject hidden = scanJson({tree.root(), "--hidden", "--min-size-mb", "0.5"});
        QCOMPARE(hidden.value(u"files").toArray().size(), 3);
        QCOMPARE(hidden.value(u"filesScanned").toInteger(), 4);
    }

    // The same text the window's export saves: RFC 4180 quoting, sizes in bytes, UTC times; the
    // record tests hold the rest of its rows' forms.
    void csvListsTheFiles() {
        TestTree tree;
        tree.file("a,b \"c\"\nd.iso", 3 * MiB, 1'795'553'520);
        const ProcessOutput csv =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--csv"});
        QCOMPARE(csv.exitCode, 0);
        QCOMPARE(csv.out, "name,path,size,category,modified,safe\r\n"
                          "\"a,b \"\"c\"\"\nd.iso\",\"" +
                              tree.root() +
                              "/a,b \"\"c\"\"\nd.iso\",3145728,Installers,"
                              "2026-11-24T20:52:00.000Z,true\r\n");
        QVERIFY(csv.err.isEmpty());
    }

    void theTableFollowsTheBinaryUnits() {
        TestTree tree;
        tree.file("a.zip", 200 * MiB);
        tree.file("b.log", 400 * MiB);
        const ProcessOutput binary = runRavelinth({"scan", tree.root(), "--binary"});
        QCOMPARE(binary.exitCode, 0);
        QVERIFY2(binary.out.split('\n')[1].contains("400 MiB"), binary.out.constData());
        QVERIFY2(binary.out.contains("600 MiB"), binary.out.constData());
        QVERIFY(binary.out.contains("Review"));
        QVERIFY(binary.out.contains("Found 2 files"));
        const ProcessOutput disk = runRavelinth({"disk", "--binary"});
        QCOMPARE(disk.exitCode, 0);
        QVERIFY2(disk.out.contains("iB ("), disk.out.constData());
    }

    void everyCommandReportsOutputThatCouldNotBeWritten() {
        ScopedTestEnvironment environment;
        TestTree tree;
        tree.file("big.iso", 2 * MiB);
        const QList<QList<QByteArray>> invocations = {
            {"scan", tree.root(), "--min-size-mb", "1"},
            {"scan", tree.root(), "--min-size-mb", "1", "--json"},
            {"scan", tree.root(), "--min-size-mb", "1", "--print0"},
            {"scan", tree.root(), "--min-size-mb", "1", "--csv"},
            {"disk"},
            {"disk", "--json"},
            {"trash", tree.file("victim.txt")},
            {"trash", tree.file("other.txt"), "--json"},
            {"scan", "--help"},
            {"--help"},
            {"--version"}};
        for (const QList<QByteArray> &arguments : invocations) {
            QStringList list;
            for (const QByteArray &argument : arguments)
                list.append(QFile::decodeName(argument));
            QProcess process;
            process.setStandardOutputFile(u"/dev/full"_qs);
            process.start(QStringLiteral(RAVELINTH_EXECUTABLE), list);
            QVERIFY(process.waitForFinished(60000));
            const QByteArray err = process.readAllStandardError();
            QVERIFY2(process.exitCode() == 1 &&
                         err.endsWith("ravelinth: error writing output: No space left on device\n"),
                     qPrintable(list.join(u' ') + u": "_qs + QString::fromUtf8(err)));
        }
    }

    // The progress line names the current file; this one's name would retitle the window.
    void theProgressLineEscapesNames() {
        TestTree tree;
        for (int i = 0; i < 100; ++i)
            tree.file("title\x1b]0;pwned\x07/f" + QByteArray::number(i));
        const QByteArray shown = stderrOnTerminal({"scan", tree.root()});
        QVERIFY2(shown.contains("title\\x1B]0;pwned\\x07/f"), shown.constData());
        QVERIFY(!shown.contains("\x1b]"));
        QVERIFY(!shown.contains('\x07'));
    }

    // Ctrl+C ends the walk where no progress report ever comes: a long chain of empty folders.
    void anInterruptStopsAWalkOfEmptyFolders() {
        TestTree tree;
        tree.deepChain("chain", 10000, "d", "bottom.iso", 200 * MiB);
        QProcess process;
        process.start(QStringLiteral(RAVELINTH_EXECUTABLE),
                      {u"scan"_qs, QFile::decodeName(tree.root()), u"--json"_qs});
        QVERIFY(process.waitForStarted());
        // The program listens for Ctrl+C from just before the walk begins.
        QDeadlineTimer deadline(30000);
        while (!catchesInterrupt(process.processId()) && !deadline.hasExpired())
            ::usleep(200);
        QVERIFY(::kill(pid_t(process.processId()), SIGINT) == 0);
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        const QJsonObject result =
            QJsonDocument::fromJson(process.readAllStandardOutput()).object();
        QVERIFY2(result.value(u"files").toArray().isEmpty(), "the walk went on after Ctrl+C");
    }

    // Seen from inside a folder whose name reads as a cache, "t1" is that folder's t1.
    void aRelativePathIsScannedAsItsAbsolutePath() {
        TestTree tree;
        tree.file("logs/t1/movie.mkv", 2 * MiB);
        const ProcessOutput relative =
            run(u"env"_qs, {u"-C"_qs, QFile::decodeName(tree.path("logs")),
                            QStringLiteral(RAVELINTH_EXECUTABLE), u"scan"_qs, u"t1"_qs,
                            u"--min-size-mb"_qs, u"1"_qs, u"--json"_qs});
        QCOMPARE(relative.exitCode, 0);
        const QJsonObject report = QJsonDocument::fromJson(relative.out).object();
        QCOMPARE(report.value(u"scannedPath").toString(), QFile::decodeName(tree.path("logs/t1")));
        const QJsonObject movie = report.value(u"files").toArray()[0].toObject();
        QCOMPARE(movie.value(u"path").toString(),
                 QFile::decodeName(tree.path("logs/t1/movie.mkv")));
        QCOMPARE(movie.value(u"category").toString(), u"Cache"_qs);
    }

    void exclusionsAndBoundariesFromTheCommandLine() {
        TestTree tree;
        tree.file("keep.bin", 2 * MiB);
        tree.file("app/node_modules/dep.bin", 2 * MiB);
        tree.file("vm/disk.vmdk", 2 * MiB);
        tree.file("private/secret.bin", 2 * MiB);
        const Mount disk(tree.path("disk"), true);
        QVERIFY2(disk.mounted(), disk.output());
        tree.file("disk/there.bin", 2 * MiB);

        const QJsonObject report = scanJson(
            {tree.root(), "--min-size-mb", "1", "--exclude", "node_modules", "--exclude=*.vmdk",
             "--exclude", tree.path("private") + '/', "-x", "--exclude", "*.img"});
        const QJsonArray files = report[u"files"].toArray();
        QCOMPARE(files.size(), 1);
        QCOMPARE(files[0].toObject()[u"path"].toString().toUtf8(), tree.path("keep.bin"));
        QCOMPARE(report[u"filesScanned"].toInteger(), 1);
        const QJsonArray skipped = report[u"skippedMounts"].toArray();
        QCOMPARE(skipped.size(), 1);
        QCOMPARE(skipped[0].toObject()[u"path"].toString().toUtf8(), tree.path("disk"));
        QCOMPARE(skipped[0].toObject()[u"fsType"].toString(), u"ext4"_qs);
        QCOMPARE(skipped[0].toObject()[u"reason"].toString(), u"otherFileSystem"_qs);

        const ProcessOutput table =
            runRavelinth({"scan", tree.root(), "--min-size-mb", "1", "--one-file-system"});
        QCOMPARE(table.exitCode, 0);
        QCOMPARE(table.err,
                 "Not entered: " + tree.path("disk") + " (ext4: on another file system)\n");
        QVERIFY(!table.out.contains("there.bin"));
    }

    void failuresAndUsageErrorsHaveTheirExitCodes() {
        TestTree tree;
        const ProcessOutput missing = runRavelinth({"scan", tree.path("gone")});
        QCOMPARE(missing.exitCode, 1);
        QCOMPARE(missing.err.trimmed(), "Path not found: " + tree.path("gone"));
        QVERIFY(missing.out.isEmpty());
        const QByteArray file = tree.file("file.iso", 2 * MiB);
        const ProcessOutput notFolder = runRavelinth({"scan", file, "--json"});
        QCOMPARE(notFolder.exitCode, 1);
        QCOMPARE(notFolder.err.trimmed(), "Not a folder: " + file);
        QVERIFY(notFolder.out.isEmpty());

        QCOMPARE(runRavelinth({"scan"}).exitCode, 2);
        QCOMPARE(runRavelinth({"scan", tree.root(), "--min-size-mb", "-3"}).exitCode, 2);
        QCOMPARE(runRavelinth({"scan", tree.root(), "--json", "--print0"}).exitCode, 2);
        QCOMPARE(runRavelinth({"scan", tree.root(), "--exclude"}).exitCode, 2);
        QCOMPARE(runRavelinth({"scan", tree.root(), "--exclude="}).exitCode, 2);
        QCOMPARE(runRavelinth({"frobnicate"}).exitCode, 2);
        QCOMPARE(runRavelinth({"scan", "--help"}).exitCode, 0);
    }
};

QTEST_GUILESS_MAIN(ScanCommandTest)
#include "tst_scancommand.moc"
