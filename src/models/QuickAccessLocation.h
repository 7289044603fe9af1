#pragma once

#include "models/Color.h"

#include <QList>
#include <QString>
#include <QUuid>

namespace ravelinth {

// A preset folder that starts a scan with one click.
struct QuickAccessLocation {
    QUuid id;
    QString name;
    QString path;
    QString icon;
    Color color;

    // Where the presets point. The model never looks folders up itself: what they are on this
    // machine is the platform's business, and a list built from given folders is testable.
    struct Folders {
        QString home;
        QString downloads;
        QString desktop;
        QString documents;
        QString applications;
        QString library;
    };

    // Home, Downloads, Desktop, Documents, Applications, Library, each with a new identifier.
    static QList<QuickAccessLocation> presets(const Folders &folders);

    bool operator==(const QuickAccessLocation &) const = default;
};

} // namespace ravelinth
