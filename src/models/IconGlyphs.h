#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <utility>

namespace ravelinth {

// The program names its icons with platform-neutral symbol identifiers ("folder.fill",
// "trash"); on Linux they are drawn from the Material Icons font. This is the one table that
// turns an identifier into the font's ligature name.
class IconGlyphs {
public:
    // The ligature name for `identifier`, or nothing when the table has no entry for it.
    static std::optional<QString> materialName(QStringView identifier);
    // Every (identifier, ligature name) pair, in table order.
    static const QList<std::pair<QString, QString>> &table();
};

} // namespace ravelinth
