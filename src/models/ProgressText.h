#pragma once

#include <QString>

namespace ravelinth {

// What a last-path-component operation gives for a path string: "" for "", "/" for "/", and
// trailing slashes ignored.
QString lastPathComponentText(const QString &path);

// A file name as the progress strip shows it: whole up to 40 characters, else its first 37
// characters and "...". Characters are what a reader counts (grapheme clusters), so an accented
// letter or an emoji made of several code points counts once.
QString shortenedFileName(const QString &name);

} // namespace ravelinth
