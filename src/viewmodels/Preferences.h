#pragma once

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

public:
    static inline const QString defaultMinSizeMBKey = QStringLiteral("defaultMinSizeMB");
    static inline const QString includeHiddenFilesKey = QStringLiteral("includeHiddenFiles");
    static inline const QString skipSystemDirectoriesKey = QStringLiteral("skipSystemDirectories");
    static inline const QString showSizesInBinaryKey = QStringLiteral("showSizesInBinary");
    static inline const QString confirmBeforeDeleteKey = QStringLiteral("confirmBeforeDelete");
    static inline const QString hasSeenOnboardingKey = QStringLiteral("hasSeenOnboarding");

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

signals:
    void changed();

private:
    bool readBool(const QString &key, bool fallback) const;
    void write(const QString &key, const QVariant &value);
    QSettings m_settings;
};

} // namespace ravelinth
