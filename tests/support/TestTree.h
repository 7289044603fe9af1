#pragma once

#include "models/ScanResult.h"

#include <QByteArray>
#include <QList>
#include <QTemporaryDir>

#include <optional>

namespace ravelinth::test {

// Who must be able to reach a tree: its owner, or every user too (the cases that drop to an
// unprivileged user, whatever the folder the checkout lies in).
enum class TreeReach { owner, everyone };

// Where test trees are made: on a real disk, outside cache-like paths.
QString treeBase(TreeReach reach = TreeReach::owner);

// A real folder tree in a temporary directory, built with POSIX calls on byte paths so that
// names need not be UTF-8. Files are sparse: a 5 GB file costs no disk space.
class TestTree {
public:
    explicit TestTree(TreeReach reach = TreeReach::owner);
    ~TestTree();
    TestTree(const TestTree &) = delete;
    TestTree &operator=(const TestTree &) = delete;

    // Absolute path of the root, as bytes, without a trailing slash.
    QByteArray root() const { return m_root; }
    QByteArray path(QByteArrayView relative) const;

    // Creates parent folders as needed. `mtimeSecs` sets the modification time when given.
    QByteArray file(QByteArrayView relative, qint64 size = 0,
                    std::optional<qint64> mtimeSecs = std::nullopt);
    QByteArray folder(QByteArrayView relative);
    QByteArray symlink(QByteArrayView target, QByteArrayView relative);
    QByteArray fifo(QByteArrayView relative);
    QByteArray socket(QByteArrayView relative);
    // A chain of `depth` folders named `link` below `relative`, made with descriptor-relative
    // calls so it may pass PATH_MAX; a file of `leafSize` bytes named `leafName` at its bottom.
    void deepChain(QByteArrayView relative, int depth, QByteArrayView link, QByteArrayView leafName,
                   qint64 leafSize);

private:
    std::optional<QTemporaryDir> m_dir;
    QByteArray m_root;
};

// Points HOME and the XDG folders at a temporary directory for the life of the object, so that
// tests never read or write the real user's settings, data or trash.
class ScopedTestEnvironment {
public:
    ScopedTestEnvironment();
    ~ScopedTestEnvironment();
    ScopedTestEnvironment(const ScopedTestEnvironment &) = delete;
    ScopedTestEnvironment &operator=(const ScopedTestEnvironment &) = delete;

    QByteArray home() const { return m_home; }
    QByteArray dataHome() const { return m_home + "/.local/share"; }
    QByteArray configHome() const { return m_home + "/.config"; }

private:
    std::optional<QTemporaryDir> m_dir;
    QByteArray m_home;
    QList<QPair<QByteArray, std::optional<QByteArray>>> m_saved;
};

// The kept files' exact paths, in the result's order.
QList<QByteArray> pathsOf(const ScanResult &result);

} // namespace ravelinth::test
