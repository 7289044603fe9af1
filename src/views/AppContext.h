#pragma once

#include "services/FinderService.h"
#include "viewmodels/NotificationCenter.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace ravelinth::views {

// The process-wide pieces that QML reaches without a view model: the notification broadcast
// that menu commands post to, the file manager and folder chooser, and the preset locations.
class AppContext : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(ravelinth::NotificationCenter *notifications READ notifications CONSTANT)
    Q_PROPERTY(ravelinth::FinderService *finder READ finder CONSTANT)
    // [{name, path, icon, color}] in table order
    Q_PROPERTY(QVariantList quickAccessLocations READ quickAccessLocations CONSTANT)
    Q_PROPERTY(QString version READ version CONSTANT)

public:
    using QObject::QObject;

    NotificationCenter *notifications() const;
    FinderService *finder() const;
    QVariantList quickAccessLocations() const;
    QString version() const;

    // A text in this platform's words ("Show in Finder" -> "Show in File Manager" on Linux).
    Q_INVOKABLE QString words(const QString &text) const;
    // A shortcut as written in help texts ("⌘ ⇧ A" -> "Ctrl Shift A" on Linux).
    Q_INVOKABLE QString shortcutWords(const QString &keys) const;
};

} // namespace ravelinth::views
