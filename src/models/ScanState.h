#pragma once

#include "models/ScanPhase.h"

#include <QObject>
#include <QString>

#include <variant>

namespace ravelinth {

namespace scanstate {
struct Idle {
    bool operator==(const Idle &) const = default;
};
struct Scanning {
    QString path;
    qint64 filesScanned = 0;
    qint64 bytesScanned = 0;
    QString currentFile;
    bool operator==(const Scanning &) const = default;
};
struct Completed {
    qint64 filesFound = 0;
    qint64 totalSize = 0;
    double duration = 0;
    bool operator==(const Completed &) const = default;
};
struct Error {
    QString message;
    bool operator==(const Error &) const = default;
};
struct Cancelled {
    bool operator==(const Cancelled &) const = default;
};
} // namespace scanstate

// Where scanning stands. Equal only when the case and every payload field are equal.
//
// The window reads it through the properties below: the phase, and each case's fields, which
// read as zero or empty in the other cases. Counts are doubles there, which hold every count a
// disk can reach exactly.
class ScanState {
    Q_GADGET
    Q_PROPERTY(ravelinth::ScanPhase::Value phase READ phase CONSTANT)
    Q_PROPERTY(QString statusMessage READ statusMessage CONSTANT)
    Q_PROPERTY(bool isScanning READ isScanning CONSTANT)
    Q_PROPERTY(QString path READ path CONSTANT)
    Q_PROPERTY(double filesScanned READ filesScanned CONSTANT)
    Q_PROPERTY(double bytesScanned READ bytesScanned CONSTANT)
    Q_PROPERTY(QString currentFile READ currentFile CONSTANT)
    Q_PROPERTY(double filesFound READ filesFound CONSTANT)
    Q_PROPERTY(double totalSize READ totalSize CONSTANT)
    Q_PROPERTY(double duration READ duration CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)

public:
    using Value = std::variant<scanstate::Idle, scanstate::Scanning, scanstate::Completed,
                               scanstate::Error, scanstate::Cancelled>;

    ScanState() = default;
    ScanState(Value value) : m_value(std::move(value)) {}

    static ScanState idle() { return Value(scanstate::Idle{}); }
    static ScanState scanning(QString path, qint64 filesScanned, qint64 bytesScanned,
                              QString currentFile) {
        return Value(scanstate::Scanning{std::move(path), filesScanned, bytesScanned,
                                         std::move(currentFile)});
    }
    static ScanState completed(qint64 filesFound, qint64 totalSize, double duration) {
        return Value(scanstate::Completed{filesFound, totalSize, duration});
    }
    static ScanState error(QString message) { return Value(scanstate::Error{std::move(message)}); }
    static ScanState cancelled() { return Value(scanstate::Cancelled{}); }

    const Value &value() const { return m_value; }
    template <typename T> const T *as() const { return std::get_if<T>(&m_value); }
    bool isIdle() const { return as<scanstate::Idle>(); }
    bool isScanning() const { return as<scanstate::Scanning>(); }
    bool isCompleted() const { return as<scanstate::Completed>(); }
    bool isError() const { return as<scanstate::Error>(); }
    bool isCancelled() const { return as<scanstate::Cancelled>(); }

    // The one-line (two while scanning) status the scanner screen shows.
    QString statusMessage() const;

    ScanPhase::Value phase() const { return ScanPhase::Value(m_value.index()); }
    QString path() const;
    double filesScanned() const;
    double bytesScanned() const;
    QString currentFile() const;
    double filesFound() const;
    double totalSize() const;
    double duration() const;
    QString message() const;

    bool operator==(const ScanState &) const = default;

private:
    Value m_value;
};

} // namespace ravelinth
