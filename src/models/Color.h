#pragma once

#include <QString>
#include <QStringView>

namespace ravelinth {

// An sRGB colour as plain data; the interface converts it to its own colour type.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    constexpr Color() = default;
    constexpr Color(double r, double g, double b, double a = 1)
        : red(r), green(g), blue(b), alpha(a) {}

    // "#10b981", "10b981", "abc" and "ff10b981" (alpha first) are understood; any other length
    // gives opaque black, and unreadable digits read as zero.
    explicit Color(QStringView hex);

    Color withOpacity(double opacity) const { return {red, green, blue, alpha * opacity}; }

    // "#AARRGGBB" as QML and QColor read it.
    QString name() const;

    bool operator==(const Color &) const = default;

    static const Color &accentGradientStart();
    static const Color &accentGradientEnd();
    static const Color &diskGreen();
    static const Color &diskYellow();
    static const Color &diskRed();
    static const Color &categoryInstaller();
    static const Color &categoryArchive();
    static const Color &categoryVideo();
    static const Color &categoryImage();
    static const Color &categoryDocument();
    static const Color &categoryAudio();
    static const Color &categoryApplication();
    static const Color &categoryCache();
    static const Color &categoryOther();

    // The toolkit's standard colours (light appearance).
    static const Color &systemBlue();
    static const Color &systemGreen();
    static const Color &systemPurple();
    static const Color &systemOrange();
    static const Color &systemPink();
    static const Color &systemIndigo();
    static const Color &systemRed();
    static const Color &systemYellow();
    static const Color &systemGray();
};

} // namespace ravelinth
