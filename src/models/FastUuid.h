#pragma once

#include <QUuid>

namespace ravelinth {

// A random (version 4) UUID from a per-thread generator seeded once from the system's entropy.
// QUuid::createUuid asks the system for every one, which dominated scans that keep a million
// files; identity needs uniqueness, not unpredictability.
QUuid makeFastUuid();

} // namespace ravelinth
