#pragma once

#include <QSet>
#include <QString>

namespace ravelinth {

// The extension sets a file's category is derived from: lower-case, no leading dot.
struct FileTypeDefinition {
    static const QSet<QString> &installerExtensions();
    static const QSet<QString> &archiveExtensions();
    static const QSet<QString> &videoExtensions();
    static const QSet<QString> &imageExtensions();
    static const QSet<QString> &documentExtensions();
    static const QSet<QString> &audioExtensions();
};

} // namespace ravelinth
