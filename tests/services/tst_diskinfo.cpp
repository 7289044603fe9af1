#include "Programs.h"
#include "services/DiskInfoService.h"

#include <QtTest>

#include <csignal>

using namespace ravelinth;

namespace {

DiskInfoOutcome profiler(const char *json) {
    return DiskInfoService::parseSystemProfilerReport(QByteArray(json));
}
DiskInfoOutcome findmnt(const char *json) {
    return DiskInfoService::parseFindmntReport(QByteArray(json));
}

// A findmnt that prints `output` after `delaySecs`, with noise on its standard error.
QByteArray printing(const QByteArray &output, int delaySecs = 0) {
    return "sleep " + QByteArray::number(delaySecs) + "\necho 'noise' >&2\ncat <<'EOF'\n" + output +
           "\nEOF\n";
}

// Alive and not merely waiting to be reaped.
bool isRunning(const QByteArray &pid) {
    QFile stat(u"/proc/"_qs + QString::fromLatin1(pid) + u"/stat"_qs);
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    const QByteArray line = stat.readAll();
    return line.mid(line.lastIndexOf(')') + 2, 1) != "Z";
}

} // namespace

class DiskInfoTest : public QObject {
    Q_OBJECT

private slots:
    void storageReportPicksTheFirstBootVolume() {
        const DiskInfoOutcome info = profiler(R"({"SPStorageDataType":[
            {"_name":"External","mount_point":"/Volumes/External","size_in_bytes":5,"free_space_in_bytes":1},
            {"_name":"Wrong","mount_point":"/","size_in_bytes":"1000","free_space_in_bytes":10},
            {"_name":"Half","mount_point":"/","size_in_bytes":1000.5,"free_space_in_bytes":10},
            {"_name":"Data","mount_point":"/","size_in_bytes":1000,"free_space_in_bytes":250,"x":[]},
            {"_name":"Later","mount_point":"/","size_in_bytes":7,"free_space_in_bytes":7}]})");
        QVERIFY(info);
        QCOMPARE(info->name, u"Data"_qs);
        QCOMPARE(info->mountPoint, u"/"_qs);
        QCOMPARE(info->totalBytes, 1000);
        QCOMPARE(info->freeBytes, 250);
        QCOMPARE(info->usedBytes, 750);

        const DiskInfoOutcome unnamed = profiler(
            R"({"SPStorageDataType":[{"_name":7,"mount_point":"/","size_in_bytes":10,"free_space_in_bytes":20}]})");
        QCOMPARE(unnamed->name, u"Macintosh HD"_qs);
        QCOMPARE(unnamed->usedBytes, -10);
        const DiskInfoOutcome again = profiler(
            R"({"SPStorageDataType":[{"_name":7,"mount_point":"/","size_in_bytes":10,"free_space_in_bytes":20}]})");
        QVERIFY(unnamed->id != again->id);
        QVERIFY(!(*unnamed == *again));
    }

    void storageReportFailuresKeepTheirKinds() {
        const auto code = [](const DiskInfoOutcome &outcome) { return outcome.error().code(); };
        QCOMPARE(code(profiler(R"({"SPStorageDataType":[]})")), DiskInfoError::noBootVolume);
        QCOMPARE(
            code(profiler(
                R"({"SPStorageDataType":[{"mount_point":"/","size_in_bytes":"1","free_space_in_bytes":1}]})")),
            DiskInfoError::noBootVolume);
        QCOMPARE(code(profiler(R"({"Other":[]})")), DiskInfoError::parseError);
        QCOMPARE(code(profiler(R"({"SPStorageDataType":{}})")), DiskInfoError::parseError);
        QCOMPARE(code(profiler(R"({"SPStorageDataType":[1,2]})")), DiskInfoError::parseError);
        QCOMPARE(code(profiler(R"([{"SPStorageDataType":[]}])")), DiskInfoError::parseError);
        const DiskInfoOutcome empty = profiler("");
        QCOMPARE(code(empty), DiskInfoError::platform);
        QVERIFY(!empty.error().description().isEmpty());
        QVERIFY(empty.error().description() != u"Failed to parse disk information"_qs);
        QCOMPARE(code(profiler("system_profiler: not JSON")), DiskInfoError::platform);
        QCOMPARE(DiskInfoError(DiskInfoError::parseError).description(),
                 u"Failed to parse disk information"_qs);
        QCOMPARE(DiskInfoError(DiskInfoError::noBootVolume).description(),
                 u"Could not find boot volume"_qs);
        QCOMPARE(DiskInfoError(DiskInfoError::attributesNotFound).description(),
                 u"File system attributes not available"_qs);
    }

    void findmntReportNamesTheVolume() {
        const DiskInfoOutcome labelled = findmnt(R"({"filesystems":[
            {"target":"/boot","source":"/dev/sda1","label":"BOOT","size":1,"avail":1},
            {"target":"/","source":"/dev/mapper/vg-root","fstype":"ext4","label":"system","size":2000,"avail":500}]})");
        QCOMPARE(labelled->name, u"system"_qs);
        QCOMPARE(labelled->usedBytes, 1500);
        const DiskInfoOutcome unlabelled = findmnt(
            R"({"filesystems":[{"target":"/","source":"/dev/mapper/vg-root","label":null,"size":2000,"avail":500}]})");
        QCOMPARE(unlabelled->name, u"vg-root"_qs);
        QCOMPARE(findmnt(R"({"filesystems":[]})").error().code(), DiskInfoError::noBootVolume);
        QCOMPARE(findmnt(R"({"file":[]})").error().code(), DiskInfoError::parseError);
    }

    void impossibleFiguresAreParseErrors() {
        for (const char *sizes :
             {R"("size":-10,"avail":-20)", R"("size":10,"avail":-1)", R"("size":10,"avail":11)"}) {
            const QByteArray document =
                R"({"filesystems":[{"target":"/","source":"/dev/x",)" + QByteArray(sizes) + "}]}";
            QCOMPARE(DiskInfoService::parseFindmntReport(document).error().code(),
                     DiskInfoError::parseError);
        }
        // 2^63 - 1024 and its negation: exact in a JSON number, their difference is not.
        QCOMPARE(
            findmnt(
                R"({"filesystems":[{"target":"/","size":9223372036854774784,"avail":-9223372036854774784}]})")
                .error()
                .code(),
            DiskInfoError::parseError);
        QCOMPARE(
            profiler(
                R"({"SPStorageDataType":[{"mount_point":"/","size_in_bytes":9223372036854774784,"free_space_in_bytes":-9223372036854774784}]})")
                .error()
                .code(),
            DiskInfoError::parseError);
    }

    void diskCommandEscapesTheLabel() {
        // Plain literals: moc misreads "\\u" escapes inside raw strings.
        const test::CommandOnPath fake(
            "findmnt", printing("{\"filesystems\":[{\"target\":\"/\",\"size\":9,\"avail\":4,"
                                "\"label\":\"evil\\u001b]0;owned\\u0007\\nTotal: 1\"}]}"));
        const test::ProcessOutput table = test::runRavelinth({"disk"});
        QCOMPARE(table.exitCode, 0);
        QVERIFY2(table.out.startsWith("Name:        evil\\x1B]0;owned\\x07\\nTotal: 1\n"),
                 table.out.constData());
        QVERIFY(!table.out.contains('\x1b') && !table.out.contains('\a'));
        const test::ProcessOutput json = test::runRavelinth({"disk", "--json"});
        QVERIFY(json.out.contains("\"name\":\"evil\\u001b]0;owned\\u0007\\nTotal: 1\""));
    }

    void serviceReadsTheRealReportAndTheFallback() {
        test::ScopedTestEnvironment environment;
        DiskInfoService service;
        const DiskInfoOutcome report = service.getSystemProfilerDiskInfo().result();
        QVERIFY2(report, report ? "" : qPrintable(report.error().description()));
        QCOMPARE(report->mountPoint, u"/"_qs);
        QVERIFY(report->totalBytes > 0 && report->freeBytes >= 0);

        const DiskInfoOutcome fallback = service.getFileManagerDiskInfo().result();
        QVERIFY(fallback);
        QCOMPARE(fallback->name, u"Root"_qs);
        QCOMPARE(fallback->mountPoint, u"/"_qs);
        QCOMPARE(fallback->usedBytes, fallback->totalBytes - fallback->freeBytes);

        qputenv("HOME", environment.home() + "/does-not-exist");
        const DiskInfoOutcome noHome = service.getFileManagerDiskInfo().result();
        QCOMPARE(noHome.error().code(), DiskInfoError::platform);
        QCOMPARE(noHome.error().description(), u"No such file or directory"_qs);
    }

    void aSlowReportCommandHoldsOnlyTheService() {
        const test::CommandOnPath slow(
            "findmnt",
            printing(R"({"filesystems":[{"target":"/","source":"/dev/x","size":9,"avail":4}]})",
                     2));
        DiskInfoService service;
        QFuture<DiskInfoOutcome> report = service.getSystemProfilerDiskInfo();
        QFuture<DiskInfoOutcome> fallback = service.getFileManagerDiskInfo();
        // Both calls returned while the report still runs; the second waits behind it. Only the
        // report's standard output is read, not the noise on its standard error.
        QVERIFY(!report.isFinished());
        QVERIFY(!fallback.isFinished());
        QCOMPARE(report.result()->name, u"x"_qs);
        QVERIFY(fallback.result());
    }

    void aHungReportIsKilledWithWhatItStartedAndTheFallbackAnswers() {
        const test::CommandOnPath hung("findmnt", "pids=\"$(dirname \"$0\")/../pids\"\n"
                                                  "echo $$ > \"$pids\"\nsleep 1000 &\n"
                                                  "echo $! >> \"$pids\"\nwait\n");
        const QByteArray pidFile = hung.path("pids");
        QProcess disk;
        disk.start(QStringLiteral(RAVELINTH_EXECUTABLE), {u"disk"_qs});
        const bool finished = disk.waitForFinished(20000);
        QFile file(QFile::decodeName(pidFile));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> pids = file.readAll().trimmed().split('\n');
        if (!finished) {
            for (const QByteArray &pid : pids)
                ::kill(pid.toInt(), SIGKILL);
            disk.kill();
            disk.waitForFinished();
            QFAIL("disk waited for a report that never ends");
        }
        QCOMPARE(disk.exitCode(), 0);
        QVERIFY(disk.readAllStandardOutput().startsWith("Name:        Root\n"));
        QCOMPARE(pids.size(), 2);
        // A SIGKILL is sent when kill() returns, not yet acted on: on a loaded machine the
        // grandchild may not have been scheduled to die by the time the command has exited.
        for (const QByteArray &pid : pids)
            QTRY_VERIFY2_WITH_TIMEOUT(!isRunning(pid), pid.constData(), 5000);
    }
};

QTEST_GUILESS_MAIN(DiskInfoTest)
#include "tst_diskinfo.moc"
