#pragma once

#include <QObject>

namespace ravelinth {

// Which of its cases a ScanState is, as an enumeration that the window can compare against.
class ScanPhase {
    Q_GADGET

public:
    enum Value { Idle, Scanning, Completed, Error, Cancelled };
    Q_ENUM(Value)
};

} // namespace ravelinth
