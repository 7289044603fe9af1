#pragma once

#include "models/QuickAccessLocation.h"

#include <QList>

namespace ravelinth {

// The quick-access presets on this machine's own folders. Built once per run so that each
// location keeps its identifier for as long as the program runs.
const QList<QuickAccessLocation> &defaultQuickAccessLocations();

} // namespace ravelinth
