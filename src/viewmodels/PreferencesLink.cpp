#include "viewmodels/PreferencesLink.h"

#include "models/ByteCountFormatter.h"
#include "viewmodels/FileListModel.h"
#include "viewmodels/FileOperations.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/ScanController.h"

#include <cmath>

namespace ravelinth {

namespace {

// Far above any choice offered; what the threshold conversion still takes without overflow.
constexpr double largestThresholdMB = 1024.0 * 1024.0 * 1024.0;

} // namespace

PreferencesLink::PreferencesLink(const Preferences &preferences, Parts parts, QObject *parent)
    : QObject(parent), m_preferences(preferences), m_scan(parts.scan), m_files(parts.files),
      m_operations(parts.operations) {
    connect(&preferences, &Preferences::changed, this, &PreferencesLink::carry);
    connect(&m_scan, &ScanController::stateChanged, this, [this] {
        if (!m_scan.isScanning())
            carry();
    });
    carry();
}

std::optional<double> PreferencesLink::thresholdFrom(const Preferences &preferences) {
    bool ok = false;
    const double megabytes = preferences.defaultMinSizeMB().toDouble(&ok);
    if (!ok || !std::isfinite(megabytes) || megabytes < 0 || megabytes > largestThresholdMB)
        return std::nullopt;
    return megabytes;
}

void PreferencesLink::carry() {
    // Read when the next scan begins, or the next move is asked for, so they may change at any
    // time.
    m_scan.setSkipSystemDirectories(m_preferences.skipSystemDirectories());
    m_scan.setExclusions(m_preferences.exclusions());
    m_scan.setStayOnOneFileSystem(m_preferences.stayOnOneFileSystem());
    m_scan.setScanNetworkDrives(m_preferences.scanNetworkDrives());
    m_operations.setConfirmationRequired(m_preferences.confirmBeforeDelete());

    const bool binary = m_preferences.showSizesInBinary();
    if (m_binary != binary) {
        m_binary = binary;
        const ByteUnits units = binary ? ByteUnits::binary : ByteUnits::decimal;
        setDefaultByteUnits(units);
        m_files.setByteUnits(units);
        m_scan.restate();
    }

    if (m_scan.isScanning())
        return;
    const std::optional<double> threshold = thresholdFrom(m_preferences);
    if (threshold && m_minSizeMB != threshold) {
        m_minSizeMB = threshold;
        m_scan.setMinFileSizeMB(*threshold);
    }
    const bool hidden = m_preferences.includeHiddenFiles();
    if (m_includeHidden != hidden) {
        m_includeHidden = hidden;
        m_scan.setIncludeHiddenFiles(hidden);
    }
}

} // namespace ravelinth
