#pragma once

#include "models/GlobPattern.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

#include <vector>

namespace ravelinth {

// What the user asked scans to leave out: folders, by their absolute paths, and name patterns.
// A pattern without "/" is matched against each entry's name, a folder's as well as a file's, so
// "node_modules" and ".git" leave out whole folders and "*.vmdk" single files. A pattern with "/"
// is matched against the whole path below the scan root ("build/*.o" leaves out the objects in
// the root's own "build" only; "**/build/*.o" those in every "build").
struct ScanExclusions {
    QList<QByteArray> folders;
    QList<QByteArray> patterns;

    bool isEmpty() const { return folders.isEmpty() && patterns.isEmpty(); }
    // Takes one word as typed: one that starts with "/" is a folder, anything else a pattern. A
    // trailing "/" is dropped ("build/" means the name "build"), and so is a leading "./"; an
    // empty word adds nothing.
    void add(QByteArray word);
};

// The patterns of some exclusions, ready to be asked about every entry of one scan's walk.
class ExclusionPatterns {
public:
    // `root` is the scan root as the walk spells the paths it hands out.
    ExclusionPatterns(const QList<QByteArray> &patterns, QByteArray root);

    bool isEmpty() const { return m_names.empty() && m_paths.empty(); }
    // True when the entry at `path`, named `name`, is left out with everything below it.
    bool excludes(QByteArrayView path, QByteArrayView name) const;
    // True when the walk would have left out `path` or a folder above it, up to the root.
    bool excludesOnTheWay(QByteArrayView path) const;

private:
    std::vector<GlobPattern> m_names;
    std::vector<GlobPattern> m_paths;
    QByteArray m_root;
};

} // namespace ravelinth
