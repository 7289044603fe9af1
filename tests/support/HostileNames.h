#pragma once

#include <QByteArray>
#include <QList>

namespace ravelinth::test {

// File names that real disks hold and careless code trips over: every byte from 1 to 255 (but
// "/") inside a name, names that are not UTF-8 (lone high bytes, overlong forms, surrogates,
// truncated sequences), control characters and newlines, quotes, shell and format
// metacharacters, names that read as command-line options, bidirectional overrides, combining
// marks, and names of the longest length a file system allows. None of them is "." or "..".
QList<QByteArray> hostileNames();

// The subset that are not valid UTF-8.
QList<QByteArray> nonUtf8HostileNames();

// True when the name starts with "." (the scanner hides it unless asked).
inline bool isHiddenName(const QByteArray &name) {
    return name.startsWith('.');
}

} // namespace ravelinth::test
