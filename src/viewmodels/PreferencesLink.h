#pragma once

#include <QObject>

#include <optional>

namespace ravelinth {

class FileListModel;
class FileOperations;
class Preferences;
class ScanController;

// Carries the stored preferences into the parts that act on them, once when made and again on
// every change: the scanner's threshold, hidden files, system folders, exclusions and mount
// boundaries, the units of every
// size, and whether a move to the Trash asks first. A running scan keeps the threshold and
// hidden-files choice it shows; a change made meanwhile reaches the scanner when the scan ends.
// Only a preference that changed is carried, so a threshold typed into the scanner survives a
// change to some other setting.
class PreferencesLink : public QObject {
    Q_OBJECT

public:
    struct Parts {
        ScanController &scan;
        FileListModel &files;
        FileOperations &operations;
    };
    PreferencesLink(const Preferences &preferences, Parts parts, QObject *parent = nullptr);

    // The threshold a stored value asks for, or none when it is not a usable size (a value
    // written by hand or by a future version), which leaves the scanner's own.
    static std::optional<double> thresholdFrom(const Preferences &preferences);

private:
    void carry();

    const Preferences &m_preferences;
    ScanController &m_scan;
    FileListModel &m_files;
    FileOperations &m_operations;
    // What was last carried; none before the first time, so that everything is carried then.
    std::optional<double> m_minSizeMB;
    std::optional<bool> m_includeHidden;
    std::optional<bool> m_binary;
};

} // namespace ravelinth
