#include "models/ScanExclusions.h"

#include "models/PathText.h"

namespace ravelinth {

void ScanExclusions::add(QByteArray word) {
    const bool isFolder = word.startsWith('/');
    word = withoutTrailingSlashes(std::move(word));
    // "./build/*.o" is written from the scan root, which is where every path pattern starts.
    while (word.startsWith("./"))
        word.remove(0, 2);
    // No entry is named "." or "..": such a word would exclude nothing.
    if (word.isEmpty() || word == "." || word == ".." || (!isFolder && word == "/"))
        return;
    QList<QByteArray> &list = isFolder ? folders : patterns;
    if (!list.contains(word))
        list.append(std::move(word));
}

ExclusionPatterns::ExclusionPatterns(const QList<QByteArray> &patterns, QByteArray root)
    : m_root(withoutTrailingSlashes(std::move(root))) {
    for (const QByteArray &pattern : patterns) {
        GlobPattern glob(pattern);
        (glob.isPathPattern() ? m_paths : m_names).push_back(std::move(glob));
    }
}

bool ExclusionPatterns::excludes(QByteArrayView path, QByteArrayView name) const {
    for (const GlobPattern &pattern : m_names) {
        if (pattern.matches(name))
            return true;
    }
    if (m_paths.empty() || !path.startsWith(m_root))
        return false;
    QByteArrayView below = path.sliced(m_root.size());
    if (below.startsWith('/'))
        below = below.sliced(1);
    else if (m_root != "/")
        return false;
    for (const GlobPattern &pattern : m_paths) {
        if (pattern.matches(below))
            return true;
    }
    return false;
}

bool ExclusionPatterns::excludesOnTheWay(QByteArrayView path) const {
    if (isEmpty() || !isSameOrBelow(path, m_root))
        return false;
    qsizetype start = m_root == "/" ? 1 : m_root.size() + 1;
    while (start < path.size()) {
        qsizetype end = path.indexOf('/', start);
        if (end < 0)
            end = path.size();
        if (end > start && excludes(path.first(end), path.sliced(start, end - start)))
            return true;
        start = end + 1;
    }
    return false;
}

} // namespace ravelinth
