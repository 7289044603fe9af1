#include "IconCatalog.h"

#include "models/IconGlyphs.h"

namespace ravelinth::views {

QString IconCatalog::fontFamily() const {
    return u"Material Icons"_qs;
}

QString IconCatalog::glyph(const QString &identifier) {
    if (identifier.isEmpty())
        return {};
    if (auto name = IconGlyphs::materialName(identifier))
        return *name;
    if (!m_missing.contains(identifier)) {
        m_missing.append(identifier);
        emit missingChanged();
    }
    return u"help"_qs;
}

} // namespace ravelinth::views
