#pragma once

#include <QObject>
#include <QStringList>

namespace ravelinth::views {

// QML's way into the icon table. Every lookup that finds nothing is remembered, so a test can
// load every screen and then assert that no identifier went without a glyph.
class IconCatalog : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)
    Q_PROPERTY(QStringList missing READ missing NOTIFY missingChanged)

public:
    using QObject::QObject;

    QString fontFamily() const;
    QStringList missing() const { return m_missing; }

    // The ligature that draws `identifier`; an unknown identifier draws the font's "help" glyph.
    Q_INVOKABLE QString glyph(const QString &identifier);

signals:
    void missingChanged();

private:
    QStringList m_missing;
};

} // namespace ravelinth::views
