#include "Programs.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcess>
#include <QTest>

namespace ravelinth::test {

ProcessOutput run(const QString &program, const QStringList &arguments, const User &user,
                  const QByteArray &input) {
    QStringList list = arguments;
    QString executable = program;
    if (user.uid) {
        const QString id = QString::number(*user.uid);
        const QString home = QFile::decodeName(user.home);
        list = QStringList{u"--reuid="_qs + id,
                           u"--regid="_qs + id,
                           u"--clear-groups"_qs,
                           u"env"_qs,
                           u"HOME="_qs + home,
                           u"XDG_DATA_HOME="_qs + QFile::decodeName(user.dataHome),
                           u"XDG_RUNTIME_DIR="_qs + home,
                           program} +
               arguments;
        executable = u"setpriv"_qs;
    }
    QProcess process;
    process.start(executable, list);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(300000))
        qFatal("%s did not finish", qPrintable(program));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

QList<QByteArray> splitPrint0(const QByteArray &out) {
    QList<QByteArray> paths = out.split('\0');
    if (!paths.isEmpty() && paths.last().isEmpty())
        paths.removeLast();
    return paths;
}

ScanOutcome waitForScan(QFuture<ScanOutcome> future) {
    QDeadlineTimer deadline(300000);
    while (!future.isFinished() && !deadline.hasExpired())
        QTest::qWait(5);
    if (!future.isFinished())
        qFatal("the scan did not finish: something blocked the walk");
    QCoreApplication::processEvents();
    return future.result();
}

} // namespace ravelinth::test
