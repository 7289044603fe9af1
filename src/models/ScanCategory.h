#pragma once

#include "models/Color.h"

#include <QByteArrayView>
#include <QObject>
#include <QString>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>

namespace ravelinth {

// One of the nine kinds a kept file is sorted into. Behaves like an enumeration
// (`ScanCategory c = ScanCategory::video; switch (c) ...`) with the category's data attached.
class ScanCategory {
    Q_GADGET

public:
    enum Value : std::uint8_t {
        installer,
        archive,
        video,
        image,
        document,
        audio,
        application,
        cache,
        other,
    };
    Q_ENUM(Value)
    static constexpr int count = 9;

    constexpr ScanCategory(Value value = other) : m_value(value) {}
    constexpr operator Value() const { return m_value; }
    constexpr int index() const { return int(m_value); }

    static const std::array<ScanCategory, count> &allCases();

    // The display name, which is also the raw value and the identifier.
    QString rawValue() const;
    QString id() const { return rawValue(); }
    static std::optional<ScanCategory> fromRawValue(QStringView rawValue);

    QString icon() const;
    const Color &color() const;

    // Installers are tested before applications, so "app" is an installer and `application`
    // never comes out of here; the category still exists and is listed everywhere.
    static ScanCategory from(QStringView extension);
    // True when a folder of the path is named like a cache or a temporary folder; the file's
    // own name does not count (see FolderIndicators).
    static bool isInCacheDirectory(QStringView path);
    static bool isInCacheDirectory(QByteArrayView path);

private:
    Value m_value;
};

} // namespace ravelinth
