#pragma once

#include <QString>
#include <QUuid>

namespace ravelinth {

// Capacity and usage of one volume. `usedBytes` is always total − free, never clamped: a report
// with more free space than capacity gives a negative figure. Records compare by all fields, id
// included, so two reads are never equal.
struct DiskInfo {
    QUuid id;
    QString name;
    QString mountPoint;
    qint64 totalBytes = 0;
    qint64 usedBytes = 0;
    qint64 freeBytes = 0;

    static DiskInfo make(QString name, QString mountPoint, qint64 totalBytes, qint64 freeBytes);

    bool operator==(const DiskInfo &) const = default;
};

} // namespace ravelinth
