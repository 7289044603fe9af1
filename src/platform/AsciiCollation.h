#pragma once

#include <QByteArrayView>
#include <QLocale>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace ravelinth {

// A locale's order of printable-ASCII names, the order QCollator gives with case sensitivity on,
// by table lookup instead of through the collation library.
//
// The collator compares on levels: the letters first, ignoring case, and case only between names
// whose letters tie. Each character gets two numbers taken from the collator itself: the rank of
// its letter (a and A share one) and its place among all 95 characters, which orders the
// characters that share a letter. Two names compare by their letters' ranks, then, on a tie, by
// their characters' places.
//
// That holds only where every character collates alone. Locales that join letters (a Czech "ch",
// a Danish "aa") or weigh punctuation differently break it; the table checks itself against the
// collator on every one- and two-character name and on such pairs, and is not offered there.
class AsciiCollation {
public:
    // Null where the locale's order is not per character. Made once per locale and shared.
    static std::shared_ptr<const AsciiCollation> forLocale(const QLocale &locale);

    // The letters' ranks of the first sixteen characters, zero after the end, as big-endian
    // integers: a name whose prefix is smaller comes first; equal prefixes settle nothing.
    std::pair<std::uint64_t, std::uint64_t> prefix(QByteArrayView name) const;
    // Negative, zero or positive, as QCollator::compare would answer for two printable names.
    int compare(QByteArrayView a, QByteArrayView b) const;

    explicit AsciiCollation(const QLocale &locale);
    bool agreesWithCollator() const { return m_agrees; }

private:
    bool verify(const QLocale &locale) const;
    std::uint8_t rankOf(char c) const { return m_letterRank[std::size_t(c - first)]; }
    std::uint8_t placeOf(char c) const { return m_place[std::size_t(c - first)]; }

    static constexpr char first = ' ';
    static constexpr int count = 95;
    std::array<std::uint8_t, count> m_letterRank{}; // by character - first; 1 and up
    std::array<std::uint8_t, count> m_place{};      // by character - first; 1 and up
    bool m_agrees = false;
};

} // namespace ravelinth
