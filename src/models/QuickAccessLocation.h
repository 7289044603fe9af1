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

    // Home, Downloads, Desktop, Documents, Applications, Library: built once per run.
    static const QList<QuickAccessLocation> &defaultLocations();

    bool operator==(const QuickAccessLocation &) const = default;
};

} // namespace ravelinth
