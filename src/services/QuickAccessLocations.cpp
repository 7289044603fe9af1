#include "services/QuickAccessLocations.h"

#include "platform/StandardLocations.h"

namespace ravelinth {

const QList<QuickAccessLocation> &defaultQuickAccessLocations() {
    static const QList<QuickAccessLocation> locations = QuickAccessLocation::presets({
        .home = platform::homeDirectory(),
        .downloads = platform::downloadsDirectory(),
        .desktop = platform::desktopDirectory(),
        .documents = platform::documentsDirectory(),
        .applications = platform::applicationsDirectory(),
        .library = platform::libraryDirectory(),
    });
    return locations;
}

} // namespace ravelinth
