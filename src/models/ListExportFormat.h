#pragma once

#include <QString>

namespace ravelinth {

enum class ListExportFormat { csv, json };

struct ListExportTarget {
    QString path;
    ListExportFormat format;
};

// Where an export goes and in what form. A name ending in .csv or .json (any case) says the
// form itself; any other name takes the chosen form and gets its extension, so that the file
// opens with the right program.
ListExportTarget listExportTarget(const QString &path, ListExportFormat chosen);

} // namespace ravelinth
