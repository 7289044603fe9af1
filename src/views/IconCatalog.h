#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace ravelinth::views {

// QML's way into the icon table. Every lookup that finds nothing is remembered, so a test can
// load every screen and then assert that no identifier went without a glyph.
class IconCatalog : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(Icons)
    QML_SINGLETON
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)
    Q_PROPERTY(QStringList missing READ missing NOTIFY missingChanged)

public:
    using QObject::QObject;

    QString fontFamily() const;
    QStringList missing() const { return m_missing; }

    // The ligature that draws `identifier`; an unknown identifier draws the font's "help" glyph.
    Q_INVOKABLE QString glyph(const QString &identifier);
    // The emoji the file list's badge puts before a category's name; "" for no category.
    Q_INVOKABLE QString categoryEmoji(int category) const;
    // The symbol beside a sort option in the picker; "" for no option.
    Q_INVOKABLE QString sortOptionSymbol(int option) const;

signals:
    void missingChanged();

private:
    QStringList m_missing;
};

} // namespace ravelinth::views
