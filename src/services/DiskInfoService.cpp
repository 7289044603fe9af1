#include "services/DiskInfoService.h"

#include "platform/StandardLocations.h"
#include "platform/StorageReport.h"
#include "utility/SerialQueue.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace ravelinth {

QString DiskInfoError::description() const {
    switch (m_code) {
    case parseError:
        return u"Failed to parse disk information"_qs;
    case noBootVolume:
        return u"Could not find boot volume"_qs;
    case attributesNotFound:
        return u"File system attributes not available"_qs;
    case platform:
        break;
    }
    return m_platformDescription;
}

namespace {

// The report answers in about a second; one that has not answered by then is hung (a stalled
// network mount), and the caller falls back to the file-system attributes.
constexpr std::chrono::seconds reportTimeLimit(5);

// A JSON number that is exactly a signed 64-bit integer (1.5 and strings are not).
std::optional<qint64> exactInteger(const QJsonValue &value) {
    if (!value.isDouble())
        return std::nullopt;
    const qint64 first = value.toInteger(0);
    if (first != value.toInteger(1))
        return std::nullopt;
    return first;
}

// The document as an object holding an array of objects under `arrayKey`, or the error.
Expected<QJsonArray, DiskInfoError> volumeArray(const QByteArray &json, const QString &arrayKey) {
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return DiskInfoError(DiskInfoError::platform, parseError.errorString());
    if (!document.isObject())
        return DiskInfoError(DiskInfoError::parseError);
    const QJsonValue array = document.object().value(arrayKey);
    if (!array.isArray())
        return DiskInfoError(DiskInfoError::parseError);
    for (const QJsonValue &element : array.toArray()) {
        if (!element.isObject())
            return DiskInfoError(DiskInfoError::parseError);
    }
    return array.toArray();
}

struct VolumeKeys {
    QString arrayKey;
    QString mountPoint;
    QString size;
    QString free;
    // findmnt's two figures describe one file system: neither is negative and the space left
    // never exceeds the capacity, so a document that says otherwise was not written by it.
    bool freeWithinSize = false;
};

DiskInfoOutcome readBootVolume(const QByteArray &json, const VolumeKeys &keys,
                               const std::function<QString(const QJsonObject &)> &nameOf) {
    const auto volumes = volumeArray(json, keys.arrayKey);
    if (!volumes)
        return volumes.error();
    for (const QJsonValue &element : *volumes) {
        const QJsonObject volume = element.toObject();
        const QJsonValue mountPoint = volume.value(keys.mountPoint);
        const auto size = exactInteger(volume.value(keys.size));
        const auto free = exactInteger(volume.value(keys.free));
        if (!mountPoint.isString() || mountPoint.toString() != u"/" || !size || !free)
            continue;
        // The used figure is their difference; one that cannot be expressed is a broken
        // document, not a reason to stop the program.
        qint64 used = 0;
        if (__builtin_sub_overflow(*size, *free, &used))
            return DiskInfoError(DiskInfoError::parseError);
        if (keys.freeWithinSize && (*free < 0 || *free > *size))
            return DiskInfoError(DiskInfoError::parseError);
        return DiskInfo::make(nameOf(volume), mountPoint.toString(), *size, *free);
    }
    return DiskInfoError(DiskInfoError::noBootVolume);
}

} // namespace

DiskInfoOutcome DiskInfoService::parseSystemProfilerReport(const QByteArray &json) {
    return readBootVolume(json,
                          {u"SPStorageDataType"_qs, u"mount_point"_qs, u"size_in_bytes"_qs,
                           u"free_space_in_bytes"_qs},
                          [](const QJsonObject &volume) {
                              const QJsonValue name = volume.value(u"_name");
                              return name.isString() ? name.toString() : u"Macintosh HD"_qs;
                          });
}

DiskInfoOutcome DiskInfoService::parseFindmntReport(const QByteArray &json) {
    return readBootVolume(json, {u"filesystems"_qs, u"target"_qs, u"size"_qs, u"avail"_qs, true},
                          [](const QJsonObject &volume) {
                              const QJsonValue label = volume.value(u"label");
                              if (label.isString() && !label.toString().isEmpty())
                                  return label.toString();
                              const QString source = volume.value(u"source").toString();
                              return source.mid(source.lastIndexOf(u'/') + 1);
                          });
}

struct DiskInfoService::Private {
    // One query at a time, off the caller's thread.
    SerialQueue queue;
};

DiskInfoService::DiskInfoService(QObject *parent)
    : QObject(parent), d(std::make_unique<Private>()) {}

DiskInfoService::~DiskInfoService() = default;

QFuture<DiskInfoOutcome> DiskInfoService::getSystemProfilerDiskInfo() {
    return d->queue.run([]() -> DiskInfoOutcome {
        const auto output = platform::runStorageReport(reportTimeLimit);
        if (!output)
            return DiskInfoError(DiskInfoError::platform, output.error());
#ifdef Q_OS_MACOS
        return parseSystemProfilerReport(*output);
#else
        return parseFindmntReport(*output);
#endif
    });
}

QFuture<DiskInfoOutcome> DiskInfoService::getFileManagerDiskInfo() {
    return d->queue.run([]() -> DiskInfoOutcome {
        const platform::FileSystemCapacity capacity =
            platform::fileSystemCapacity(QFile::encodeName(platform::homeDirectory()));
        if (!capacity.ok)
            return DiskInfoError(DiskInfoError::platform, capacity.error);
        if (!capacity.complete)
            return DiskInfoError(DiskInfoError::attributesNotFound);
        return DiskInfo::make(platform::fallbackVolumeName(), u"/"_qs, capacity.totalBytes,
                              capacity.freeBytes);
    });
}

} // namespace ravelinth
