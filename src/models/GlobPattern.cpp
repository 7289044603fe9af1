#include "models/GlobPattern.h"

namespace ravelinth {

namespace {

bool isSpecial(char c) {
    return c == '*' || c == '?' || c == '[' || c == '\\';
}

// Matches one bracket expression at `p` against `c`; on success `p` moves past its `]`. A
// bracket that never closes is not an expression, and the caller takes `[` literally.
bool bracketMatches(QByteArrayView pattern, qsizetype &p, char c, bool &isExpression) {
    qsizetype i = p + 1;
    const bool negated = i < pattern.size() && (pattern[i] == '!' || pattern[i] == '^');
    if (negated)
        ++i;
    bool found = false;
    bool first = true;
    while (i < pattern.size() && (pattern[i] != ']' || first)) {
        first = false;
        char low = pattern[i];
        if (low == '\\' && i + 1 < pattern.size())
            low = pattern[++i];
        char high = low;
        if (i + 2 < pattern.size() && pattern[i + 1] == '-' && pattern[i + 2] != ']') {
            high = pattern[i + 2];
            if (high == '\\' && i + 3 < pattern.size())
                high = pattern[++i + 2];
            i += 2;
        }
        const auto byte = static_cast<unsigned char>(c);
        if (static_cast<unsigned char>(low) <= byte && byte <= static_cast<unsigned char>(high))
            found = true;
        ++i;
    }
    isExpression = i < pattern.size();
    if (!isExpression)
        return false;
    p = i + 1;
    return found != negated && c != '/';
}

// Backtracks to the last star only, which keeps a match linear in practice: a later star can
// always absorb what an earlier one would have. A single star stops at "/", so when it can go no
// further the last "**" takes one more byte instead.
bool matchFrom(QByteArrayView pattern, QByteArrayView subject) {
    qsizetype p = 0;
    qsizetype s = 0;
    qsizetype starP = -1;
    qsizetype starS = 0;
    bool starCrossesSlash = false;
    qsizetype deepP = -1;
    qsizetype deepS = 0;
    while (s < subject.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            starCrossesSlash = p + 1 < pattern.size() && pattern[p + 1] == '*';
            while (p < pattern.size() && pattern[p] == '*')
                ++p;
            starP = p;
            starS = s;
            if (starCrossesSlash) {
                deepP = p;
                deepS = s;
            }
            continue;
        }
        if (p < pattern.size()) {
            const char c = subject[s];
            if (pattern[p] == '?' && c != '/') {
                ++p;
                ++s;
                continue;
            }
            if (pattern[p] == '[') {
                bool isExpression = false;
                qsizetype at = p;
                if (bracketMatches(pattern, at, c, isExpression)) {
                    p = at;
                    ++s;
                    continue;
                }
                if (!isExpression && c == '[') {
                    ++p;
                    ++s;
                    continue;
                }
            } else if (pattern[p] == '\\' && p + 1 < pattern.size()) {
                if (pattern[p + 1] == c) {
                    p += 2;
                    ++s;
                    continue;
                }
            } else if (pattern[p] != '?' && pattern[p] == c) {
                ++p;
                ++s;
                continue;
            }
        }
        if (starP >= 0 && (starCrossesSlash || subject[starS] != '/')) {
            s = ++starS;
            p = starP;
        } else if (deepP >= 0) {
            starP = p = deepP;
            starS = s = ++deepS;
            starCrossesSlash = true;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*')
        ++p;
    return p == pattern.size();
}

} // namespace

GlobPattern::GlobPattern(QByteArray pattern) : m_pattern(std::move(pattern)) {
    bool special = false;
    for (char c : m_pattern)
        special = special || isSpecial(c);
    if (!special) {
        m_kind = Kind::literal;
        m_fixed = m_pattern;
        return;
    }
    if (m_pattern.startsWith('*') && m_pattern.size() > 1 && m_pattern[1] != '*') {
        bool restSpecial = false;
        for (char c : QByteArrayView(m_pattern).sliced(1))
            restSpecial = restSpecial || isSpecial(c) || c == '/';
        if (!restSpecial) {
            m_kind = Kind::suffix;
            m_fixed = m_pattern.sliced(1);
        }
    }
}

bool GlobPattern::matches(QByteArrayView subject) const {
    switch (m_kind) {
    case Kind::literal:
        return subject == m_fixed;
    case Kind::suffix:
        return subject.endsWith(m_fixed) && !subject.contains('/');
    case Kind::general:
        break;
    }
    return matchFrom(m_pattern, subject);
}

} // namespace ravelinth
