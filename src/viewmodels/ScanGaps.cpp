#include "viewmodels/ScanGaps.h"

#include "models/ByteCountFormatter.h"
#include "models/DisplayText.h"

namespace ravelinth {

ScanGaps::ScanGaps(QObject *parent) : QObject(parent) {}

QString ScanGaps::unreadableSummary() const {
    if (m_unreadableFolders == 0)
        return {};
    return formatGroupedInteger(m_unreadableFolders) + (m_unreadableFolders == 1
                                                            ? u" folder could not be read"_qs
                                                            : u" folders could not be read"_qs);
}

QString ScanGaps::skippedSummary() const {
    if (m_skippedMounts.isEmpty())
        return {};
    return formatGroupedInteger(m_skippedMounts.size()) + (m_skippedMounts.size() == 1
                                                               ? u" drive was not entered"_qs
                                                               : u" drives were not entered"_qs);
}

void ScanGaps::take(const ScanResult &result) {
    m_unreadableFolders = result.unreadableFolders;
    m_unreadablePaths.clear();
    for (const QByteArray &path : result.unreadablePaths)
        m_unreadablePaths.append(displayText(path));
    m_skippedMounts.clear();
    for (const SkippedMount &mount : result.skippedMounts) {
        m_skippedMounts.append(displayText(mount.path) + u" ("_qs + displayText(mount.fsType) +
                               u"): "_qs + mount.reasonText());
    }
    emit changed();
}

void ScanGaps::clear() {
    if (m_unreadableFolders == 0 && m_skippedMounts.isEmpty())
        return;
    m_unreadableFolders = 0;
    m_unreadablePaths.clear();
    m_skippedMounts.clear();
    emit changed();
}

} // namespace ravelinth
