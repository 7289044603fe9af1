#pragma once

#include <QString>

namespace ravelinth {

// The few texts that name a thing of one desktop ("Finder", "your Mac", "⌘") are written once, in
// the words of the platform the program was built for. This is the one table that rewords them.
class PlatformWords {
public:
    // A sentence or label: "Show in Finder" becomes "Show in File Manager" on Linux.
    static QString text(const QString &original);
    // A shortcut as shown to the user: "⌘ ⇧ A" becomes "Ctrl Shift A" on Linux.
    static QString shortcut(const QString &original);
};

} // namespace ravelinth
