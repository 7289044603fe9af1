#include "Programs.h"
#include "TestTree.h"
#include "TrashInspection.h"
#include "platform/Trash.h"
#include "services/TrashService.h"

#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace ravelinth;
using namespace ravelinth::test;

namespace {

// `ravelinth trash` started by a child of this process, which first changes folder one step at
// a time (deeper than a shell's `cd` can go) and, when asked, then removes the folder it ended in
// (given as a full path). Its standard output is the pipe that `output` reads, so the test decides
// when the command may write on; `finish` waits for its exit code.
class TrashChild {
public:
    TrashChild(const QList<QByteArray> &steps, QList<QByteArray> arguments,
               bool removeWorkingFolder = false) {
        const QByteArray program = RAVELINTH_EXECUTABLE;
        arguments.prepend("trash");
        arguments.prepend(program);
        std::vector<char *> argv;
        for (QByteArray &argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        int pipe[2];
        if (::pipe(pipe) != 0)
            qFatal("no pipe");
        m_pid = ::fork();
        if (m_pid == 0) {
            ::dup2(pipe[1], STDOUT_FILENO);
            ::close(pipe[0]);
            for (const QByteArray &step : steps) {
                if (::chdir(step.constData()) != 0)
                    ::_exit(126);
            }
            if (removeWorkingFolder && ::rmdir(steps.last().constData()) != 0)
                ::_exit(125);
            ::execv(program.constData(), argv.data());
            ::_exit(127);
        }
        ::close(pipe[1]);
        output.open(pipe[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    }
    void interrupt() { ::kill(m_pid, SIGINT); }
    int finish() {
        int status = 0;
        ::waitpid(m_pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    // The whole report and the exit code, once the command is done.
    ProcessOutput wait() {
        const QByteArray report = output.readAll();
        return {finish(), report, {}};
    }
    QFile output;

private:
    pid_t m_pid = -1;
};

} // namespace

// What a path given to the Trash names: one entry, found by the kernel's rules, or a refusal.
class TrashResolutionTest : public QObject {
    Q_OBJECT

    // One for the whole run: GLib reads XDG_DATA_HOME once per process.
    ScopedTestEnvironment environment;

private slots:
    // Each path names one entry, found by the kernel's rules; that entry is what is checked,
    // reported and moved, and a path that names none moves nothing.
    void hostileSpellingsMoveExactlyWhatTheKernelNames() {
        TestTree tree;
        const QByteArray project = tree.folder("proj");
        const QByteArray besideProject = writeDistinct(tree, "proj/report.pdf");
        const QByteArray besideTarget = writeDistinct(tree, "archive/report.pdf");
        tree.folder("archive/2019");
        tree.symlink(tree.path("archive/2019"), "proj/link2019");
        writeDistinct(tree, "proj/plain.txt");

        // Refused, the working folder and everything in it untouched.
        const QByteArray projectBefore = snapshotOf(project);
        const QList<QPair<QByteArray, QByteArray>> refusals{{"", "The path is empty"},
                                                            {"typo/..", "names no single item"},
                                                            {"typo/x", "No such file or directory"},
                                                            {".", "names no single item"},
                                                            {"..", "names no single item"},
                                                            {"link2019/..", "names no single item"},
                                                            {"plain.txt/", "Not a directory"},
                                                            {"link2019/", "Not a directory"},
                                                            {"plain.txt/x", "Not a directory"}};
        for (const auto &[argument, reason] : refusals) {
            const ProcessOutput output = TrashChild({project}, {argument}).wait();
            QCOMPARE(output.exitCode, 1);
            QVERIFY2(output.out.contains(reason), output.out.constData());
            QCOMPARE(snapshotOf(project), projectBefore);
        }

        // The file that `cat link2019/../report.pdf` reads is the one beside the link's target.
        const QByteArray projectReport = snapshotOf(besideProject);
        ProcessOutput output = TrashChild({project}, {"link2019/../report.pdf"}).wait();
        QCOMPARE(output.exitCode, 0);
        QCOMPARE(output.out, "moved: " + besideTarget + '\n');
        QVERIFY(!exists(besideTarget));
        QCOMPARE(snapshotOf(besideProject), projectReport);
        QCOMPARE(recordedPath(environment.dataHome() + "/Trash/files/report.pdf"), besideTarget);

        // A working folder that is gone, or deeper than a path can spell: a relative path has
        // nothing to be resolved against, and is not taken from the root instead.
        const QByteArray victim = writeDistinct(tree, "victim.bin");
        const QByteArray fromRoot = victim.mid(1);
        tree.folder("doomed");
        output = TrashChild({tree.path("doomed")}, {fromRoot}, true).wait();
        QCOMPARE(output.exitCode, 1);
        QVERIFY2(output.out.contains("The current folder cannot be resolved"), output.out.data());
        const QByteArray link(200, 'd');
        tree.deepChain("deep", 25, link, "leaf", 0);
        output = TrashChild(QList<QByteArray>{tree.path("deep")} + QList<QByteArray>(25, link),
                            {fromRoot})
                     .wait();
        QCOMPARE(output.exitCode, 1);
        QVERIFY2(output.out.contains("The current folder cannot be resolved"), output.out.data());
        QVERIFY(exists(victim));
    }

    // The Trash's own folders are not items: moving an info file would orphan its item.
    void trashFoldersAndTheirContentsStay() {
        TestTree tree;
        const QByteArray first = writeDistinct(tree, "first.iso");
        QVERIFY(std::holds_alternative<TrashSuccess>(TrashBatch().move(first)));
        const QByteArray trash = environment.dataHome() + "/Trash";
        const QByteArray volumeTrash = tree.folder(".Trash-0/files");
        writeDistinct(tree, ".Trash-0/files/kept.iso");
        writeDistinct(tree, ".Trash/0/files/other.iso");
        const QList<QByteArray> paths{trash,
                                      trash + "/files/first.iso",
                                      trash + "/info/first.iso.trashinfo",
                                      trash + "/files",
                                      tree.symlink(trash, "trash-link") + "/info/",
                                      tree.path("trash-link/files/first.iso"),
                                      tree.path(".Trash-0"),
                                      volumeTrash + "/kept.iso",
                                      tree.path(".Trash/0/files/other.iso")};
        QList<QByteArray> before;
        for (const QByteArray &path : paths)
            before.append(snapshotOf(path));
        const QList<TrashResult> results = TrashService::moveToTrashNow(paths);
        for (qsizetype i = 0; i < paths.size(); ++i) {
            const auto *failure = std::get_if<TrashFailure>(&results[i]);
            QVERIFY2(failure && failure->error.endsWith(u"' to Trash: Part of the Trash"_qs),
                     paths[i].constData());
            QCOMPARE(snapshotOf(paths[i]), before[i]);
        }
        // The link to the Trash is no part of it: it goes as a link.
        QVERIFY(std::holds_alternative<TrashSuccess>(TrashBatch().move(tree.path("trash-link"))));
        QVERIFY(exists(trash + "/files/first.iso"));
    }

    // An entry replaced between the check and the move is not the one that was checked.
    void anEntryReplacedAfterItsCheckStays() {
        TestTree tree;
        const QByteArray path = writeDistinct(tree, "swapped.iso");
        const auto checked = platform::resolveEntry(path).entry->identity;
        QVERIFY(checked);
        // Made while the first still exists, so that the two cannot share an inode number.
        const QByteArray replacing = writeDistinct(tree, "replacement.iso");
        QCOMPARE(::rename(replacing.constData(), path.constData()), 0);
        const QByteArray replacement = snapshotOf(path);
        const platform::TrashAttempt attempt = platform::moveToTrash(path, *checked);
        QVERIFY(!attempt.moved);
        QCOMPARE(attempt.error, u"The item was replaced after it was checked"_qs);
        QCOMPARE(snapshotOf(path), replacement);
    }

    // Ctrl+C lets the move in progress finish, then reports everything done and exits 130.
    // The report goes into a pipe that is read one line at a time, so the command cannot be
    // done with the whole batch before the interrupt arrives.
    void anInterruptedBatchReportsWhatItMoved() {
        TestTree tree;
        QList<QByteArray> paths;
        for (int i = 0; i < 1500; ++i)
            paths.append(tree.file("many/file-" + QByteArray::number(i) + ".bin"));
        TrashChild child({}, paths);
        QByteArray report = child.output.readLine();
        QVERIFY(report.startsWith("moved: "));
        child.interrupt();
        report += child.output.readAll();
        QCOMPARE(child.finish(), 130);
        const QList<QByteArray> lines = report.trimmed().split('\n');
        QVERIFY(lines.size() < paths.size());
        for (qsizetype i = 0; i < paths.size(); ++i) {
            const bool reported = i < lines.size();
            if (reported)
                QCOMPARE(lines[i], "moved: " + paths[i]);
            QCOMPARE(exists(paths[i]), !reported);
        }
    }
};

QTEST_GUILESS_MAIN(TrashResolutionTest)
#include "tst_trashresolution.moc"
