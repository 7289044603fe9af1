#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace ravelinth {

// `path` without the slashes at its end, as the walk and the mount table spell folders: "/a/b/"
// is "/a/b"; "/" stays "/".
QByteArray withoutTrailingSlashes(QByteArray path);

// True when `path` is `folder` or lies below it, compared by components: "/ab" is not below
// "/a". Both are absolute and without trailing slashes; every path is below "/".
bool isSameOrBelow(QByteArrayView path, QByteArrayView folder);

} // namespace ravelinth
