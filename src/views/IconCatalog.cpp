#include "IconCatalog.h"

#include "models/IconGlyphs.h"
#include "models/ScanCategory.h"
#include "models/SortOption.h"

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

QString IconCatalog::categoryEmoji(int category) const {
    if (category < 0 || category >= ScanCategory::count)
        return {};
    switch (ScanCategory::Value(category)) {
    case ScanCategory::installer:
        return u"💿"_qs;
    case ScanCategory::archive:
        return u"🗜️"_qs;
    case ScanCategory::video:
        return u"🎬"_qs;
    case ScanCategory::image:
        return u"🖼️"_qs;
    case ScanCategory::document:
        return u"📄"_qs;
    case ScanCategory::audio:
        return u"🎵"_qs;
    case ScanCategory::application:
        return u"📱"_qs;
    case ScanCategory::cache:
        return u"🗑️"_qs;
    case ScanCategory::other:
        return u"📁"_qs;
    }
    return {};
}

QString IconCatalog::sortOptionSymbol(int option) const {
    if (option < 0 || option >= SortOption::count)
        return {};
    switch (SortOption::Value(option)) {
    case SortOption::sizeDescending:
        return u"arrow.down"_qs;
    case SortOption::sizeAscending:
        return u"arrow.up"_qs;
    case SortOption::nameAscending:
    case SortOption::nameDescending:
        return u"textformat.abc"_qs;
    case SortOption::dateNewest:
    case SortOption::dateOldest:
        return u"calendar"_qs;
    }
    return {};
}

} // namespace ravelinth::views
