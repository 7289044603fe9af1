#include "models/FolderIndicators.h"

#include <QByteArray>

#include <array>
#include <span>
#include <string_view>

namespace ravelinth {

namespace {

using namespace std::string_view_literals;

constexpr std::array cacheFragments{"cache"sv, "caches"sv, "tmp"sv};
constexpr std::array cacheWords{"temp"sv, "logs"sv};
constexpr std::array safeFragments{"downloads"sv, "cache"sv, "caches"sv, "tmp"sv, ".trash"sv};
constexpr std::array safeWords{"temp"sv};

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}
bool isUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
bool isLower(char c) {
    return c >= 'a' && c <= 'z';
}
bool isLetter(char c) {
    return isUpper(c) || isLower(c) || static_cast<unsigned char>(c) >= 0x80;
}

bool matchesAt(std::string_view name, size_t at, std::string_view word) {
    if (at + word.size() > name.size())
        return false;
    for (size_t i = 0; i < word.size(); ++i) {
        if (lowered(name[at + i]) != word[i])
            return false;
    }
    return true;
}

bool containsFragment(std::string_view name, std::string_view fragment) {
    for (size_t at = 0; at + fragment.size() <= name.size(); ++at) {
        if (matchesAt(name, at, fragment))
            return true;
    }
    return false;
}

// A word boundary lies between `before` and `after`: one of them is not a letter, or the case
// turns from lower to upper there.
bool isBoundary(char before, char after) {
    return !isLetter(before) || !isLetter(after) || (isLower(before) && isUpper(after));
}

bool containsWord(std::string_view name, std::string_view word) {
    for (size_t at = 0; at + word.size() <= name.size(); ++at) {
        if (!matchesAt(name, at, word))
            continue;
        const size_t end = at + word.size();
        const bool startsWord = at == 0 || isBoundary(name[at - 1], name[at]);
        const bool endsWord = end == name.size() || isBoundary(name[end - 1], name[end]);
        if (startsWord && endsWord)
            return true;
    }
    return false;
}

bool folderMatches(std::string_view name, std::span<const std::string_view> fragments,
                   std::span<const std::string_view> words) {
    for (std::string_view fragment : fragments) {
        if (containsFragment(name, fragment))
            return true;
    }
    for (std::string_view word : words) {
        if (containsWord(name, word))
            return true;
    }
    return false;
}

} // namespace

bool isInIndicatedFolder(QByteArrayView path, FolderIndicators indicators) {
    const bool cache = indicators == FolderIndicators::cache;
    const std::span<const std::string_view> fragments =
        cache ? std::span<const std::string_view>(cacheFragments) : safeFragments;
    const std::span<const std::string_view> words =
        cache ? std::span<const std::string_view>(cacheWords) : safeWords;
    const std::string_view text(path.data(), size_t(path.size()));
    // Every component before the last slash is a folder; what follows it is the file's own name.
    const size_t lastSlash = text.rfind('/');
    if (lastSlash == std::string_view::npos)
        return false;
    size_t begin = 0;
    while (begin < lastSlash) {
        size_t end = text.find('/', begin);
        if (end > lastSlash)
            end = lastSlash;
        if (end > begin && folderMatches(text.substr(begin, end - begin), fragments, words))
            return true;
        begin = end + 1;
    }
    return false;
}

bool isInIndicatedFolder(QStringView path, FolderIndicators indicators) {
    return isInIndicatedFolder(QByteArrayView(path.toUtf8()), indicators);
}

} // namespace ravelinth
