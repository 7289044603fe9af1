#pragma once

#include <QByteArrayView>
#include <QLocale>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace ravelinth {

// A locale's order of printable-ASCII names, the order QCollator gives with case sensitivity on,
// as short keys made by table lookup instead of by the collation library.
//
// The collator compares on levels: the letters first, ignoring case, and case only between names
// whose letters tie. Each character gets two numbers taken from the collator itself: the rank of
// its letter (a and A share one) and its place among all 95 characters, which orders the
// characters that share a letter. A key is the letters' ranks, a zero, then the places, so keys
// compare as plain bytes in the collator's order.
//
// That holds only where every character collates alone. Locales that join letters (a Czech "ch",
// a Danish "aa") or weigh punctuation differently break it; the table checks itself against the
// collator on every one- and two-character name and on such pairs, and is not offered there.
class AsciiCollation {
public:
    // Null where the locale's order is not per character. Made once per locale and shared.
    static std::shared_ptr<const AsciiCollation> forLocale(const QLocale &locale);

    // True when every byte is a printable ASCII character (space to tilde).
    static bool isPrintable(QByteArrayView name);

    // Appends the key of a printable name to `out`: 2 * size + 1 bytes.
    void appendKey(QByteArrayView name, std::vector<std::uint8_t> &out) const;
    // The name a key was made from, written to `out` (room for (length - 1) / 2 characters);
    // returns its length.
    std::size_t nameOfKey(const std::uint8_t *key, std::size_t length, char16_t *out) const;

    explicit AsciiCollation(const QLocale &locale);
    bool agreesWithCollator() const { return m_agrees; }

private:
    bool verify(const QLocale &locale) const;

    static constexpr char first = ' ';
    static constexpr int count = 95;
    std::array<std::uint8_t, count> m_letterRank{}; // by character - first; 1 and up
    std::array<std::uint8_t, count> m_place{};      // by character - first; 1 and up
    std::array<char, count + 1> m_byPlace{};        // the character at each place
    bool m_agrees = false;
};

} // namespace ravelinth
