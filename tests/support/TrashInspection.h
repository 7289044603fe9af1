#pragma once

#include "TestTree.h"

#include <QByteArray>
#include <QList>

namespace ravelinth::test {

// The names in a folder, sorted, without "." and "..".
QList<QByteArray> namesIn(const QByteArray &folder);

// What a path holds, deep enough to tell whether anything changed: the type and mode, the bytes
// of a file, the target of a link, and the same for everything inside a folder. Empty when
// nothing is there.
QByteArray snapshotOf(const QByteArray &path);

// The path recorded in the .trashinfo beside a trashed item, percent-decoded to bytes.
QByteArray recordedPath(const QByteArray &trashedItem);

// Makes a file of bytes no two files share, so a mix-up cannot go unnoticed.
QByteArray writeDistinct(TestTree &tree, QByteArrayView relative, int size = 64);

// Whether anything, even a dangling link, is at the path.
bool exists(const QByteArray &path);

} // namespace ravelinth::test
