#pragma once

#include "models/ScanExclusions.h"

#include <QObject>
#include <QSettings>
#include <QVariant>

namespace ravelinth {

// The stored preferences, read when made and written on every change. They reach the parts that
// act on them through `PreferencesLink`, the view layer's formatter and, for
// `confirmBeforeDelete`, the file operations (handed over by the root). `defaultMinSizeMB` is a
// variant so that a stored value matching no choice of the settings window survives untouched.
class Preferences : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        QVariant defaultMinSizeMB READ defaultMinSizeMB WRITE setDefaultMinSizeMB NOTIFY changed)
    Q_PROPERTY(
        bool includeHiddenFiles READ includeHiddenFiles WRITE setIncludeHiddenFiles NOTIFY changed)
    Q_PROPERTY(bool skipSystemDirectories READ skipSystemDirectories WRITE setSkipSystemDirectories
                   NOTIFY changed)
    Q_PROPERTY(
        bool showSizesInBinary READ showSizesInBinary WRITE setShowSizesInBinary NOTIFY changed)
    Q_PROPERTY(bool confirmBeforeDelete READ confirmBeforeDelete WRITE setConfirmBeforeDelete NOTIFY
                   changed)
    Q_PROPERTY(
        bool hasSeenOnboarding READ hasSeenOnboarding WRITE setHasSeenOnboarding NOTIFY changed)
    // What scans leave out, as the settings list them: folders as display text, then patterns.
    Q_PROPERTY(QStringList excludedFolders READ excludedFolderNames NOTIFY changed)
    Q_PROPERTY(QStringList excludedPatterns READ excludedPatterns NOTIFY changed)
    Q_PROPERTY(bool stayOnOneFileSystem READ stayOnOneFileSystem WRITE setStayOnOneFileSystem NOTIFY
                   changed)
    Q_PROPERTY(
        bool scanNetworkDrives READ scanNetworkDrives WRITE setScanNetworkDrives NOTIFY changed)

public:
    static inline const QString defaultMinSizeMBKey = QStringLiteral("defaultMinSizeMB");
    static inline const QString includeHiddenFilesKey = QStringLiteral("includeHiddenFiles");
    static inline const QString skipSystemDirectoriesKey = QStringLiteral("skipSystemDirectories");
    static inline const QString showSizesInBinaryKey = QStringLiteral("showSizesInBinary");
    static inline const QString confirmBeforeDeleteKey = QStringLiteral("confirmBeforeDelete");
    static inline const QString hasSeenOnboardingKey = QStringLiteral("hasSeenOnboarding");
    static inline const QString excludedFoldersKey = QStringLiteral("excludedFolders");
    static inline const QString excludedPatternsKey = QStringLiteral("excludedPatterns");
    static inline const QString stayOnOneFileSystemKey = QStringLiteral("stayOnOneFileSystem");
    static inline const QString scanNetworkDrivesKey = QStringLiteral("scanNetworkDrives");

    explicit Preferences(QObject *parent = nullptr);

    QVariant defaultMinSizeMB() const;
    void setDefaultMinSizeMB(const QVariant &megabytes);
    bool includeHiddenFiles() const;
    void setIncludeHiddenFiles(bool value);
    bool skipSystemDirectories() const;
    void setSkipSystemDirectories(bool value);
    bool showSizesInBinary() const;
    void setShowSizesInBinary(bool value);
    bool confirmBeforeDelete() const;
    void setConfirmBeforeDelete(bool value);
    bool hasSeenOnboarding() const;
    void setHasSeenOnboarding(bool value);
    bool stayOnOneFileSystem() const;
    void setStayOnOneFileSystem(bool value);
    bool scanNetworkDrives() const;
    void setScanNetworkDrives(bool value);

    // Folders keep their exact bytes, so a name that is not UTF-8 is excluded as it lies on disk.
    ScanExclusions exclusions() const;
    QStringList excludedFolderNames() const;
    QStringList excludedPatterns() const;
    void addExcludedFolder(const QByteArray &path);
    // Takes a line typed into the settings: an absolute path (or one from "~") is a folder,
    // anything else a pattern. False when it adds nothing (empty, or already there).
    Q_INVOKABLE bool addExclusion(const QString &typed);
    // Asks for a folder with the folder chooser and excludes it.
    Q_INVOKABLE void chooseExcludedFolder();
    Q_INVOKABLE void removeExcludedFolder(int index);
    Q_INVOKABLE void removeExcludedPattern(int index);

signals:
    void changed();

private:
    bool readBool(const QString &key, bool fallback) const;
    void write(const QString &key, const QVariant &value);
    void writeExclusions(const ScanExclusions &exclusions);
    QSettings m_settings;
};

} // namespace ravelinth
