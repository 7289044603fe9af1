#include "platform/NameSortKeys.h"

#include "models/AsciiText.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <optional>

#if RAVELINTH_HAVE_ICU
#include <unicode/ucol.h>
#endif

namespace ravelinth {

// In the C locale QCollator compares code units; big-endian units compare the same way as bytes.
// Elsewhere the keys are ICU's, made with the attributes QCollator sets.
struct NameSortKeys::Collator {
    explicit Collator(const QLocale &locale) : codeUnits(locale.language() == QLocale::C) {
        if (codeUnits)
            return;
#if RAVELINTH_HAVE_ICU
        UErrorCode status = U_ZERO_ERROR;
        const QByteArray name = locale.bcp47Name().replace(u'-', u'_').toLatin1();
        icu = ucol_open(name.constData(), &status);
        if (U_FAILURE(status)) {
            icu = nullptr;
            codeUnits = true;
            return;
        }
        ucol_setAttribute(icu, UCOL_NORMALIZATION_MODE, UCOL_ON, &status);
        ucol_setAttribute(icu, UCOL_NUMERIC_COLLATION, UCOL_OFF, &status);
        ucol_setAttribute(icu, UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, &status);
#else
        opaque.emplace(locale);
        opaque->setCaseSensitivity(Qt::CaseSensitive);
        opaque->setNumericMode(false);
#endif
    }
    ~Collator() {
#if RAVELINTH_HAVE_ICU
        if (icu)
            ucol_close(icu);
#endif
    }
    Collator(const Collator &) = delete;
    Collator &operator=(const Collator &) = delete;

    bool codeUnits;
#if RAVELINTH_HAVE_ICU
    UCollator *icu = nullptr;
#else
    std::optional<QCollator> opaque;
#endif
};

NameSortKeys::NameSortKeys(const QLocale &locale)
    : m_collator(std::make_unique<Collator>(locale)) {}
NameSortKeys::~NameSortKeys() = default;
NameSortKeys::NameSortKeys(NameSortKeys &&) noexcept = default;
NameSortKeys &NameSortKeys::operator=(NameSortKeys &&) noexcept = default;

void NameSortKeys::reserve(qsizetype count) {
    m_ends.reserve(size_t(count));
    // Names run to a score of characters; their keys to a little more.
    m_bytes.reserve(size_t(count) * 24);
}

void NameSortKeys::append(QStringView name) {
#if !RAVELINTH_HAVE_ICU
    if (!m_collator->codeUnits) {
        m_opaqueKeys.push_back(m_collator->opaque->sortKey(name.toString()));
        m_ends.push_back(m_bytes.size());
        return;
    }
#endif
    appendKey(name, m_bytes);
    m_ends.push_back(m_bytes.size());
}

void NameSortKeys::appendKey(QStringView name, std::vector<std::uint8_t> &out) const {
    const size_t start = out.size();
    if (m_collator->codeUnits) {
        out.resize(start + size_t(name.size()) * 2);
        std::uint8_t *bytes = out.data() + start;
        for (QChar c : name) {
            *bytes++ = std::uint8_t(c.unicode() >> 8);
            *bytes++ = std::uint8_t(c.unicode());
        }
        return;
    }
#if RAVELINTH_HAVE_ICU
    // Most keys fit the buffer on the stack; a longer one is asked for again.
    const auto source = reinterpret_cast<const UChar *>(name.utf16());
    const auto length = int32_t(name.size());
    std::uint8_t key[256];
    const int32_t needed = ucol_getSortKey(m_collator->icu, source, length, key, sizeof key);
    if (size_t(needed) <= sizeof key) {
        out.insert(out.end(), key, key + needed);
    } else {
        out.resize(start + size_t(needed));
        ucol_getSortKey(m_collator->icu, source, length, out.data() + start, needed);
    }
#endif
}

void NameSortKeys::appendUtf8(QByteArrayView name) {
    // Most names are ASCII: widened on the stack they need neither a decoder nor an allocation.
    constexpr qsizetype room = 256;
    if (name.size() <= room && isAsciiText(name)) {
        char16_t wide[room];
        for (qsizetype i = 0; i < name.size(); ++i)
            wide[i] = char16_t(name[i]);
        append(QStringView(wide, name.size()));
    } else {
        append(QString::fromUtf8(name));
    }
}

void NameSortKeys::appendAll(NameSortKeys &&other) {
    const size_t offset = m_bytes.size();
    m_bytes.insert(m_bytes.end(), other.m_bytes.begin(), other.m_bytes.end());
    for (size_t end : other.m_ends)
        m_ends.push_back(offset + end);
    std::move(other.m_opaqueKeys.begin(), other.m_opaqueKeys.end(),
              std::back_inserter(m_opaqueKeys));
    // The other's buffers can be large; they go now rather than with it.
    other.m_bytes = {};
    other.m_ends = {};
    other.m_opaqueKeys = {};
}

std::pair<const std::uint8_t *, size_t> NameSortKeys::keyAt(qsizetype index) const {
    const size_t begin = index == 0 ? 0 : m_ends[size_t(index) - 1];
    return {m_bytes.data() + begin, m_ends[size_t(index)] - begin};
}

NameSortKeys::Prefix NameSortKeys::prefix(qsizetype index) const {
    const auto [key, length] = keyAt(index);
    std::uint8_t bytes[16] = {};
    std::memcpy(bytes, key, std::min<size_t>(length, 16));
    Prefix prefix;
    for (int i = 0; i < 8; ++i) {
        prefix.high = prefix.high << 8 | bytes[i];
        prefix.low = prefix.low << 8 | bytes[8 + i];
    }
    return prefix;
}

int NameSortKeys::compare(qsizetype a, qsizetype b) const {
    if (!m_opaqueKeys.empty())
        return m_opaqueKeys[size_t(a)].compare(m_opaqueKeys[size_t(b)]);
    const size_t beginA = a == 0 ? 0 : m_ends[size_t(a) - 1];
    const size_t beginB = b == 0 ? 0 : m_ends[size_t(b) - 1];
    const size_t lengthA = m_ends[size_t(a)] - beginA;
    const size_t lengthB = m_ends[size_t(b)] - beginB;
    const int bytes =
        std::memcmp(m_bytes.data() + beginA, m_bytes.data() + beginB, std::min(lengthA, lengthB));
    if (bytes != 0)
        return bytes;
    return lengthA < lengthB ? -1 : lengthA > lengthB ? 1 : 0;
}

int NameSortKeys::compareWith(qsizetype index, QStringView name) const {
#if !RAVELINTH_HAVE_ICU
    if (!m_collator->codeUnits)
        return m_opaqueKeys[size_t(index)].compare(m_collator->opaque->sortKey(name.toString()));
#endif
    std::vector<std::uint8_t> key;
    appendKey(name, key);
    const auto [own, length] = keyAt(index);
    const int bytes = std::memcmp(own, key.data(), std::min(length, key.size()));
    if (bytes != 0)
        return bytes;
    return length < key.size() ? -1 : length > key.size() ? 1 : 0;
}

} // namespace ravelinth
