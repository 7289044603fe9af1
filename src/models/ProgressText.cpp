#include "models/ProgressText.h"

#include <QTextBoundaryFinder>

namespace ravelinth {

QString lastPathComponentText(const QString &path) {
    if (path.isEmpty())
        return {};
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/')
        --end;
    const QStringView trimmed = QStringView(path).first(end);
    if (trimmed == u"/")
        return trimmed.toString();
    return trimmed.sliced(trimmed.lastIndexOf(u'/') + 1).toString();
}

QString shortenedFileName(const QString &name) {
    constexpr int longestWhole = 40;
    constexpr int keptWhenCut = 37;
    QTextBoundaryFinder graphemes(QTextBoundaryFinder::Grapheme, name);
    qsizetype cutAt = -1;
    int count = 0;
    while (graphemes.toNextBoundary() != -1) {
        ++count;
        if (count == keptWhenCut)
            cutAt = graphemes.position();
        if (count > longestWhole)
            return name.first(cutAt) + u"..."_qs;
    }
    return name;
}

} // namespace ravelinth
