#pragma once

#include "models/FileItem.h"

#include <QList>
#include <QStringList>

namespace ravelinth {

// A move to the Trash the user asked for, with the files captured at that moment: what the
// confirmation shows is what a confirmed move moves, whatever the list or the selection has
// become while the question was open.
struct TrashRequest {
    // What the selection becomes afterwards. A move of the selection clears all of it, the
    // files that could not be moved included; a move of named files (the context menu) takes
    // only what moved out of it, so the rest of the selection survives a right-click elsewhere.
    enum class Scope { selection, namedFiles };

    QList<FileItem> files;
    Scope scope = Scope::selection;

    qint64 totalSize() const;
    // Files whose data has other names besides this one: moving them frees nothing while those
    // names exist.
    int linkedCount() const;
    // The first `limit` names as the list shows them, in the request's order.
    QStringList names(qsizetype limit) const;
};

} // namespace ravelinth
