#pragma once

#include "models/DisplayText.h"
#include "models/ScanCategory.h"

#include <QByteArray>
#include <QDateTime>
#include <QHashFunctions>
#include <QString>
#include <QUuid>

#include <array>
#include <cstdint>

namespace ravelinth {

// One kept file. The path is the exact bytes the walk produced (a Linux name need not be UTF-8);
// every file operation uses those bytes, and the display* functions decode them for people,
// with U+FFFD for bytes that are not UTF-8. Two records for the same path are equal.
struct FileItem {
    QUuid id;
    QByteArray path;
    qint64 size = 0;
    qint64 modifiedMSecs = 0; // content modification time, milliseconds since the epoch (UTC)
    ScanCategory category = ScanCategory::other;
    // Set when an earlier kept name of the same data carries its size, so sums skip this one.
    bool countedUnderAnotherName = false;
    // What the name is made of, told once while the walk has the path at hand: ordering a
    // million names by their first letters then reads the list in order instead of every path
    // where it lies on the heap. `unknown` for a record not made by make().
    enum class NameKind : std::uint8_t { unknown, printableAscii, other };
    NameKind nameKind = NameKind::unknown;
    // Names the file's data has; above one, moving this name alone frees no space. (These three
    // fit in the padding after the category.)
    std::uint32_t linkCount = 1;
    // The name's first bytes, zero after its end; set with `nameKind` and only valid with it.
    std::array<char, 16> nameHead{};

    // The path must not change afterwards: the name's kind and head are taken from it here.
    static FileItem make(QByteArray path, qint64 size, qint64 modifiedMSecs, ScanCategory category,
                         std::uint32_t linkCount = 1);

    // The bytes this name adds to a sum: none when another name's data is already counted.
    qint64 countedSize() const { return countedUnderAnotherName ? 0 : size; }

    // Last path component, as bytes.
    QByteArrayView name() const;
    // The folder holding the file: the path without its last component.
    QByteArrayView parentPath() const;
    QString displayPath() const { return displayText(path); }
    QString displayName() const { return displayText(name()); }
    QString displayParentPath() const { return displayText(parentPath()); }
    // Lower-cased text after the last dot of the name; empty when there is none, when the only
    // dot starts the name (".bashrc") or when the name ends with a dot.
    QString fileExtension() const;
    QDateTime modifiedDate() const {
        return QDateTime::fromMSecsSinceEpoch(modifiedMSecs, Qt::UTC);
    }

    bool isSafeToDelete() const;
    // By the names of the folders that hold it (a download, cache, temporary or trash folder),
    // never by the file's own name.
    bool isDefinitelySafe() const;

    bool operator==(const FileItem &other) const { return path == other.path; }
};

} // namespace ravelinth

// Every member may be moved as raw bytes, so a growing list of a million files is moved by the
// allocator's page remapping instead of element by element, and never held twice.
Q_DECLARE_TYPEINFO(ravelinth::FileItem, Q_RELOCATABLE_TYPE);

namespace ravelinth {

inline size_t qHash(const FileItem &item, size_t seed = 0) {
    return qHash(item.path, seed);
}

QByteArrayView lastPathComponent(QByteArrayView path);
QString fileExtensionOf(QByteArrayView name);

} // namespace ravelinth
