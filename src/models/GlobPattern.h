#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace ravelinth {

// A shell wildcard pattern matched against names or paths as bytes, the way they lie on disk, so
// a name that is not UTF-8 matches as well as any other and no locale changes the answer.
//
// `*` matches any run of bytes and `?` any one byte, neither crossing a `/`; `**` also crosses
// `/`. `[abc]`, `[a-z]` and `[!a-z]` match one byte from (or not from) a set; `\` takes the next
// byte literally. A `[` without its `]` is an ordinary byte. Case counts, as it does on disk.
class GlobPattern {
public:
    explicit GlobPattern(QByteArray pattern);

    const QByteArray &text() const { return m_pattern; }
    // True when the pattern holds a `/`: then it is meant for a path, not a single name.
    bool isPathPattern() const { return m_pattern.contains('/'); }
    bool matches(QByteArrayView subject) const;

private:
    enum class Kind { literal, suffix, general };
    QByteArray m_pattern;
    // What the common shapes reduce to, so that "node_modules" and "*.vmdk", met once per entry of
    // a large walk, cost one comparison.
    Kind m_kind = Kind::general;
    QByteArray m_fixed;
};

} // namespace ravelinth
