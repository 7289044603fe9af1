#pragma once

#include <QObject>
#include <QString>
#include <QUuid>

namespace ravelinth {

// Capacity and usage of one volume. `usedBytes` is always total − free, never clamped: a report
// with more free space than capacity gives a negative figure. Records compare by all fields, id
// included, so two reads are never equal.
struct DiskInfo {
    Q_GADGET
    // Byte counts as doubles for the window; every size a disk reports fits their mantissa.
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString mountPoint MEMBER mountPoint CONSTANT)
    Q_PROPERTY(double totalBytes READ totalBytesValue CONSTANT)
    Q_PROPERTY(double usedBytes READ usedBytesValue CONSTANT)
    Q_PROPERTY(double freeBytes READ freeBytesValue CONSTANT)
    Q_PROPERTY(double usagePercent READ usagePercent CONSTANT)

public:
    QUuid id;
    QString name;
    QString mountPoint;
    qint64 totalBytes = 0;
    qint64 usedBytes = 0;
    qint64 freeBytes = 0;

    // Used as a share of the total, 0 to 100; 0 for a volume that reports no capacity.
    double usagePercent() const;
    double totalBytesValue() const { return double(totalBytes); }
    double usedBytesValue() const { return double(usedBytes); }
    double freeBytesValue() const { return double(freeBytes); }

    static DiskInfo make(QString name, QString mountPoint, qint64 totalBytes, qint64 freeBytes);

    bool operator==(const DiskInfo &) const = default;
};

} // namespace ravelinth
