#include "Programs.h"
#include "services/FinderService.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QtTest>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace ravelinth;

namespace {

const QString serviceName = u"org.freedesktop.FileManager1"_qs;

// A file manager on the private bus that records every ShowItems call, or never answers.
class RecordingFileManager : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    bool answers = true;
    QList<QPair<QStringList, QString>> calls;
    QList<QDBusMessage> unanswered;

public slots:
    void ShowItems(const QStringList &uris, const QString &startupId) {
        calls.append({uris, startupId});
        if (!answers) {
            setDelayedReply(true);
            unanswered.append(message());
        }
    }
};

} // namespace

class FinderTest : public QObject {
    Q_OBJECT

    QProcess m_bus;
    test::TestTree m_tree;
    RecordingFileManager m_manager;
    std::optional<QDBusConnection> m_serviceConnection;
    // The fallback opens folders with xdg-open: this one writes down what it was asked.
    const test::CommandOnPath m_xdgOpen{
        "xdg-open", "printf '%s\\n' \"$1\" >> \"$(dirname \"$0\")/../opened.log\"\n"};
    const QByteArray m_openedLog = m_xdgOpen.path("opened.log");

    void publish(bool on) {
        if (on) {
            QVERIFY(m_serviceConnection->registerObject(
                u"/org/freedesktop/FileManager1"_qs, &m_manager, QDBusConnection::ExportAllSlots));
            QVERIFY(m_serviceConnection->registerService(serviceName));
        } else {
            m_serviceConnection->unregisterService(serviceName);
            m_serviceConnection->unregisterObject(u"/org/freedesktop/FileManager1"_qs);
        }
    }

    QByteArray opened() {
        QFile log(QFile::decodeName(m_openedLog));
        return log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
    }

private slots:
    void initTestCase() {
        m_bus.start(u"dbus-daemon"_qs, {u"--session"_qs, u"--nofork"_qs, u"--print-address=1"_qs});
        QVERIFY2(m_bus.waitForStarted(), "dbus-daemon is missing");
        QTRY_VERIFY(m_bus.canReadLine());
        const QByteArray address = m_bus.readLine().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        m_serviceConnection =
            QDBusConnection::connectToBus(QString::fromUtf8(address), u"service"_qs);
        QVERIFY(m_serviceConnection->isConnected());
    }

    void cleanupTestCase() {
        m_bus.kill();
        m_bus.waitForFinished();
    }

    void revealSendsEveryPathInOneCall() {
        publish(true);
        QSignalSpy completed(&FinderService::shared(), &FinderService::revealCompleted);
        FinderService::shared().revealInFinder(
            {"/home/u/a b.mov", "/home/u/caf\xe9.iso", "/home/u/100%.zip", "t1/x"});
        QVERIFY(completed.wait(10000));
        QCOMPARE(completed.first().first().toBool(), true);
        QCOMPARE(m_manager.calls.size(), 1);
        const QByteArray relative = QFile::encodeName(QDir::currentPath()) + "/t1/x";
        QCOMPARE(
            m_manager.calls.first().first,
            (QStringList{u"file:///home/u/a%20b.mov"_qs, u"file:///home/u/caf%E9.iso"_qs,
                         u"file:///home/u/100%25.zip"_qs,
                         u"file://"_qs + QString::fromLatin1(relative.toPercentEncoding("/"))}));
        QCOMPARE(m_manager.calls.first().second, QString());
        QVERIFY(opened().isEmpty());
        publish(false);
    }

    void withoutAFileManagerTheFirstFolderOpens() {
        QSignalSpy completed(&FinderService::shared(), &FinderService::revealCompleted);
        FinderService::shared().revealInFinder({"/srv/media/first.mkv", "/other/second.mkv"});
        QVERIFY(completed.wait(10000));
        QCOMPARE(completed.first().first().toBool(), false);
        QTRY_COMPARE(opened(), QByteArray("/srv/media\n"));
    }

    void aFileManagerThatNeverAnswersFallsBackWithoutBlocking() {
        m_manager.answers = false;
        publish(true);
        QSignalSpy completed(&FinderService::shared(), &FinderService::revealCompleted);
        FinderService::shared().revealInFinder({"/data/x.iso"});
        QCOMPARE(completed.size(), 0); // the call returned before any answer
        // A call left to D-Bus's own limit would wait 25 s for the silent manager.
        QVERIFY(completed.wait(15000));
        QCOMPARE(completed.first().first().toBool(), false);
        QTRY_VERIFY(opened().endsWith("/data\n"));
        publish(false);
    }

    void revealCommandFallsBackQuicklyWithoutABusThatSpeaks() {
        // Accepts connections into its backlog and never says a word.
        const QByteArray socketPath = m_tree.path("silent.sock");
        const int silent = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_un name{};
        name.sun_family = AF_UNIX;
        std::strncpy(name.sun_path, socketPath.constData(), sizeof(name.sun_path) - 1);
        QVERIFY(::bind(silent, reinterpret_cast<const sockaddr *>(&name), sizeof(name)) == 0);
        QVERIFY(::listen(silent, 8) == 0);
        const QByteArray savedBus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        const QByteArray savedRuntime = qgetenv("XDG_RUNTIME_DIR");
        qputenv("XDG_RUNTIME_DIR", m_tree.path("runtime"));
        for (const QByteArray &address :
             {"unix:path=" + m_tree.path("silent.sock"), QByteArray()}) {
            QFile::remove(QFile::decodeName(m_openedLog));
            if (address.isEmpty())
                qunsetenv("DBUS_SESSION_BUS_ADDRESS");
            else
                qputenv("DBUS_SESSION_BUS_ADDRESS", address);
            QProcess reveal;
            reveal.setWorkingDirectory(QFile::decodeName(m_tree.root()));
            reveal.start(QStringLiteral(RAVELINTH_EXECUTABLE),
                         {u"reveal"_qs, u"media/a.mkv"_qs, u"b"_qs});
            // Under D-Bus's own 25 s limit, a silent bus would hold the command past this wait.
            const bool finished = reveal.waitForFinished(20000);
            if (!finished) {
                reveal.kill();
                reveal.waitForFinished();
            }
            QVERIFY2(finished, address.constData());
            QCOMPARE(reveal.exitCode(), 0);
            QTRY_COMPARE(opened(), m_tree.path("media") + '\n');
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", savedBus);
        qputenv("XDG_RUNTIME_DIR", savedRuntime);
        ::close(silent);
    }

    void folderSelectionIsAnsweredByTheInterface() {
        FinderService &finder = FinderService::shared();
        QFuture<std::optional<QString>> nobody = finder.selectFolder(u"Pick"_qs, std::nullopt);
        QVERIFY(nobody.isFinished());
        QVERIFY(!nobody.result().has_value());

        QSignalSpy requested(&finder, &FinderService::folderSelectionRequested);
        QObject chooser;
        connect(&finder, &FinderService::folderSelectionRequested, &chooser, [] {});
        QFuture<std::optional<QString>> chosen =
            finder.selectFolder(u"Select Folder to Scan"_qs, std::nullopt);
        QCOMPARE(requested.size(), 1);
        QCOMPARE(requested.first().at(0).toString(), u"Select Folder to Scan"_qs);
        QCOMPARE(requested.first().at(1).toString(), QDir::homePath());
        QVERIFY(!chosen.isFinished());
        finder.completeFolderSelection(u"/srv/data"_qs);
        QCOMPARE(chosen.result(), std::optional<QString>(u"/srv/data"_qs));

        QFuture<std::optional<QString>> cancelled = finder.selectFolder(u"T"_qs, u"/opt"_qs);
        QCOMPARE(requested.last().at(1).toString(), u"/opt"_qs);
        finder.completeFolderSelection(QString());
        QVERIFY(!cancelled.result().has_value());
    }
};

QTEST_GUILESS_MAIN(FinderTest)
#include "tst_finder.moc"
