#include "models/ListExportFormat.h"

namespace ravelinth {

ListExportTarget listExportTarget(const QString &path, ListExportFormat chosen) {
    if (path.endsWith(u".csv", Qt::CaseInsensitive))
        return {path, ListExportFormat::csv};
    if (path.endsWith(u".json", Qt::CaseInsensitive))
        return {path, ListExportFormat::json};
    return {path + (chosen == ListExportFormat::csv ? u".csv"_qs : u".json"_qs), chosen};
}

} // namespace ravelinth
