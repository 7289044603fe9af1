#include "models/PlatformWords.h"

#include <array>
#include <utility>

namespace ravelinth {

namespace {

#ifdef Q_OS_MACOS
constexpr std::array<std::pair<const char16_t *, const char16_t *>, 0> textWords{};
constexpr std::array<std::pair<const char16_t *, const char16_t *>, 0> keyWords{};
#else
constexpr std::array textWords{
    std::pair{u"Finder", u"File Manager"},
    std::pair{u"your Mac", u"your computer"},
    std::pair{u"for macOS", u"for Linux"},
};
constexpr std::array keyWords{
    std::pair{u"⌘", u"Ctrl"},
    std::pair{u"⇧", u"Shift"},
    std::pair{u"⌫", u"Backspace"},
};
#endif

template <typename Words> QString reword(QString text, const Words &words) {
    for (const auto &[from, to] : words)
        text.replace(QString::fromUtf16(from), QString::fromUtf16(to));
    return text;
}

} // namespace

QString PlatformWords::text(const QString &original) {
    return reword(original, textWords);
}

QString PlatformWords::shortcut(const QString &original) {
    return reword(original, keyWords);
}

} // namespace ravelinth
