#include "models/QuickAccessLocation.h"

#include "platform/StandardLocations.h"

namespace ravelinth {

const QList<QuickAccessLocation> &QuickAccessLocation::defaultLocations() {
    static const QList<QuickAccessLocation> locations = [] {
        auto make = [](QString name, QString path, QString icon, const Color &color) {
            return QuickAccessLocation{QUuid::createUuid(), std::move(name), std::move(path),
                                       std::move(icon), color};
        };
        return QList<QuickAccessLocation>{
            make(u"Home"_qs, platform::homeDirectory(), u"house.fill"_qs, Color::systemBlue()),
            make(u"Downloads"_qs, platform::downloadsDirectory(), u"arrow.down.circle.fill"_qs,
                 Color::systemGreen()),
            make(u"Desktop"_qs, platform::desktopDirectory(), u"menubar.dock.rectangle"_qs,
                 Color::systemPurple()),
            make(u"Documents"_qs, platform::documentsDirectory(), u"doc.fill"_qs,
                 Color::systemOrange()),
            make(u"Applications"_qs, platform::applicationsDirectory(), u"square.grid.2x2.fill"_qs,
                 Color::systemPink()),
            make(u"Library"_qs, platform::libraryDirectory(), u"books.vertical.fill"_qs,
                 Color::systemIndigo()),
        };
    }();
    return locations;
}

} // namespace ravelinth
