#pragma once

#include "services/FinderService.h"
#include "viewmodels/NotificationCenter.h"

#include <QObject>
#include <QVariantList>

namespace ravelinth::views {

// The process-wide pieces that QML reaches without a view model: the notification broadcast
// that menu commands post to, the file manager and folder chooser, and the preset locations.
class AppContext : public QObject {
    Q_OBJECT
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

    // The progress strip's texts: counts with the locale's digit grouping, byte counts in the
    // program's one format, and the examined file's name, cut when long.
    Q_INVOKABLE QString formatGroupedInteger(double value) const;
    Q_INVOKABLE QString formatByteCount(double bytes) const;
    Q_INVOKABLE QString lastPathComponent(const QString &path) const;
    Q_INVOKABLE QString shortenedFileName(const QString &name) const;
};

} // namespace ravelinth::views
