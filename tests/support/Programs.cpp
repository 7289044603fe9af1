#include "Programs.h"

#include "TestTree.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QProcess>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace ravelinth::test {

User unprivilegedUser(TestTree &tree) {
    ::chmod(tree.root().constData(), 0755);
    const QByteArray home = tree.folder("nobody-home");
    if (::chown(home.constData(), nobody, nobody) != 0 || ::chmod(home.constData(), 0700) != 0)
        qFatal("cannot give %s to the unprivileged user", home.constData());
    return {nobody, home, home + "/.local/share"};
}

CommandOnPath::CommandOnPath(const char *name, const QByteArray &body)
    : m_savedPath(qgetenv("PATH")) {
    const QByteArray script = m_tree.file("bin/" + QByteArray(name));
    QFile file(QFile::decodeName(script));
    if (!file.open(QIODevice::WriteOnly) || file.write("#!/bin/sh\n" + body) < 0)
        qFatal("cannot write %s", script.constData());
    file.close();
    ::chmod(script.constData(), 0755);
    qputenv("PATH", m_tree.path("bin") + ':' + m_savedPath);
}

CommandOnPath::~CommandOnPath() {
    qputenv("PATH", m_savedPath);
}

QString reachableCopy(const QString &program) {
    static QHash<QString, QString> copies;
    if (const auto it = copies.constFind(program); it != copies.cend())
        return *it;
    const QString folder = treeBase(TreeReach::everyone) + u"/programs-"_qs +
                           QString::number(QCoreApplication::applicationPid());
    const QString copy = folder + u'/' + QFileInfo(program).fileName();
    QDir().mkpath(folder);
    QFile::remove(copy);
    if (!QFile::copy(program, copy))
        qFatal("cannot copy %s to %s", qPrintable(program), qPrintable(copy));
    QFile::setPermissions(copy, QFile::permissions(copy) | QFile::ExeUser | QFile::ExeGroup |
                                    QFile::ExeOther | QFile::ReadOther | QFile::ReadGroup);
    QFile::setPermissions(folder, QFile::permissions(folder) | QFile::ExeOther | QFile::ReadOther |
                                      QFile::ExeGroup | QFile::ReadGroup);
    copies.insert(program, copy);
    return copy;
}

ProcessOutput run(const QString &program, const QStringList &arguments, const User &user,
                  const QByteArray &input) {
    QStringList list = arguments;
    QString executable = program;
    QProcess process;
    if (user.uid) {
        process.setWorkingDirectory(QFile::decodeName(user.home));
        const QString id = QString::number(*user.uid);
        const QString home = QFile::decodeName(user.home);
        list = QStringList{u"--reuid="_qs + id,
                           u"--regid="_qs + id,
                           u"--clear-groups"_qs,
                           u"env"_qs,
                           u"HOME="_qs + home,
                           u"XDG_DATA_HOME="_qs + QFile::decodeName(user.dataHome),
                           u"XDG_STATE_HOME="_qs + home + u"/.local/state"_qs,
                           u"XDG_RUNTIME_DIR="_qs + home,
                           QDir::isAbsolutePath(program) ? reachableCopy(program) : program} +
               arguments;
        executable = u"setpriv"_qs;
    }
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
