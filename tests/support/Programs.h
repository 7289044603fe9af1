#pragma once

#include "TestTree.h"
#include "services/FileScannerService.h"

#include <QByteArray>
#include <QFile>
#include <QFuture>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <sys/types.h>

namespace ravelinth::test {

constexpr uid_t nobody = 65534;

// Who runs a program: this process's own user and environment, or an unprivileged user (through
// setpriv) with a home and data folder of its own.
struct User {
    std::optional<uid_t> uid;
    QByteArray home;
    QByteArray dataHome;
};

struct ProcessOutput {
    int exitCode = -1; // -1 when it crashed
    QByteArray out;
    QByteArray err;
};

// The unprivileged user, with a private home of its own in `tree`, whose root it may enter.
User unprivilegedUser(TestTree &tree);

// A shell script named `name`, first on PATH for the life of the object. Beside its own folder
// lies a scratch folder, `path()`, where the script may write ("$(dirname "$0")/../").
class CommandOnPath {
public:
    CommandOnPath(const char *name, const QByteArray &body);
    ~CommandOnPath();
    CommandOnPath(const CommandOnPath &) = delete;
    CommandOnPath &operator=(const CommandOnPath &) = delete;

    QByteArray path(QByteArrayView relative) const { return m_tree.path(relative); }

private:
    TestTree m_tree;
    QByteArray m_savedPath;
};

// A copy of `program` that every user can run: the build folder may lie inside a private
// checkout that another user cannot enter. Made once per program and test process.
QString reachableCopy(const QString &program);

// Runs `program` as `user`; as another user, from a reachable copy and inside that user's home.
ProcessOutput run(const QString &program, const QStringList &arguments, const User &user = {},
                  const QByteArray &input = {});

#ifdef RAVELINTH_EXECUTABLE
// The command-line program; QProcess takes arguments as text, so they must be UTF-8.
inline ProcessOutput runRavelinth(const QList<QByteArray> &arguments, const User &user = {}) {
    QStringList list;
    for (const QByteArray &argument : arguments)
        list.append(QFile::decodeName(argument));
    return run(QStringLiteral(RAVELINTH_EXECUTABLE), list, user);
}
#endif

QList<QByteArray> splitPrint0(const QByteArray &out);

// Waits for a scan, turning a walk that never ends into a fatal error instead of a hang, and
// delivers the progress reports queued to this thread before returning.
ScanOutcome waitForScan(QFuture<ScanOutcome> future);

} // namespace ravelinth::test
