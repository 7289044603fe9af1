#pragma once

#include <QByteArrayView>
#include <QCollator>
#include <QLocale>
#include <QStringView>

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace ravelinth {

// Names' sort keys in a locale's order, the order QCollator gives with case sensitivity on.
// The keys are bytes in one buffer, so a million of them cost two allocations, not two million;
// the first sixteen bytes of each come as two integers, which settle most comparisons without
// reading the buffer.
class NameSortKeys {
public:
    explicit NameSortKeys(const QLocale &locale);
    ~NameSortKeys();
    NameSortKeys(NameSortKeys &&) noexcept;
    NameSortKeys &operator=(NameSortKeys &&) noexcept;

    void reserve(qsizetype count);
    void append(QStringView name);
    // The same for a name given as it lies on disk: UTF-8, invalid bytes read as U+FFFD.
    void appendUtf8(QByteArrayView name);
    // Moves the other's keys after these; both must have been made for the same locale.
    void appendAll(NameSortKeys &&other);

    qsizetype size() const { return qsizetype(m_ends.size()); }

    struct Prefix {
        std::uint64_t high = 0;
        std::uint64_t low = 0;
        auto operator<=>(const Prefix &) const = default;
    };
    Prefix prefix(qsizetype index) const;
    // Negative, zero or positive, as QCollator::compare would answer for the two names.
    int compare(qsizetype a, qsizetype b) const;
    // The same between the name of key `index` and `name`, which has no key here: slower, as
    // it makes one.
    int compareWith(qsizetype index, QStringView name) const;

private:
    std::pair<const std::uint8_t *, std::size_t> keyAt(qsizetype index) const;
    void appendKey(QStringView name, std::vector<std::uint8_t> &out) const;

    struct Collator;
    std::unique_ptr<Collator> m_collator;
    std::vector<std::uint8_t> m_bytes;
    std::vector<std::size_t> m_ends;
    // Where the system has no collation library whose keys are bytes.
    std::vector<QCollatorSortKey> m_opaqueKeys;
};

} // namespace ravelinth
