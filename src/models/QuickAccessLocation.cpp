#include "models/QuickAccessLocation.h"

namespace ravelinth {

QList<QuickAccessLocation> QuickAccessLocation::presets(const Folders &folders) {
    auto make = [](QString name, QString path, QString icon, const Color &color) {
        return QuickAccessLocation{QUuid::createUuid(), std::move(name), std::move(path),
                                   std::move(icon), color};
    };
    return QList<QuickAccessLocation>{
        make(u"Home"_qs, folders.home, u"house.fill"_qs, Color::systemBlue()),
        make(u"Downloads"_qs, folders.downloads, u"arrow.down.circle.fill"_qs,
             Color::systemGreen()),
        make(u"Desktop"_qs, folders.desktop, u"menubar.dock.rectangle"_qs, Color::systemPurple()),
        make(u"Documents"_qs, folders.documents, u"doc.fill"_qs, Color::systemOrange()),
        make(u"Applications"_qs, folders.applications, u"square.grid.2x2.fill"_qs,
             Color::systemPink()),
        make(u"Library"_qs, folders.library, u"books.vertical.fill"_qs, Color::systemIndigo()),
    };
}

} // namespace ravelinth
