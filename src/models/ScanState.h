#pragma once

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
class ScanState {
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

    bool operator==(const ScanState &) const = default;

private:
    Value m_value;
};

} // namespace ravelinth
