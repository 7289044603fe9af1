#include "viewmodels/Preferences.h"

#include "models/DisplayText.h"
#include "services/FinderService.h"
#include "utility/WhenFinished.h"

#include <QDir>
#include <QFile>

namespace ravelinth {

Preferences::Preferences(QObject *parent) : QObject(parent) {}

bool Preferences::readBool(const QString &key, bool fallback) const {
    return m_settings.value(key, fallback).toBool();
}

void Preferences::write(const QString &key, const QVariant &value) {
    if (m_settings.contains(key) && m_settings.value(key) == value)
        return;
    m_settings.setValue(key, value);
    m_settings.sync();
    emit changed();
}

QVariant Preferences::defaultMinSizeMB() const {
    return m_settings.value(defaultMinSizeMBKey, 100.0);
}
void Preferences::setDefaultMinSizeMB(const QVariant &megabytes) {
    write(defaultMinSizeMBKey, megabytes.toDouble());
}
bool Preferences::includeHiddenFiles() const {
    return readBool(includeHiddenFilesKey, false);
}
void Preferences::setIncludeHiddenFiles(bool value) {
    write(includeHiddenFilesKey, value);
}
bool Preferences::skipSystemDirectories() const {
    return readBool(skipSystemDirectoriesKey, true);
}
void Preferences::setSkipSystemDirectories(bool value) {
    write(skipSystemDirectoriesKey, value);
}
bool Preferences::showSizesInBinary() const {
    return readBool(showSizesInBinaryKey, false);
}
void Preferences::setShowSizesInBinary(bool value) {
    write(showSizesInBinaryKey, value);
}
bool Preferences::confirmBeforeDelete() const {
    return readBool(confirmBeforeDeleteKey, true);
}
void Preferences::setConfirmBeforeDelete(bool value) {
    write(confirmBeforeDeleteKey, value);
}
bool Preferences::hasSeenOnboarding() const {
    return readBool(hasSeenOnboardingKey, false);
}
void Preferences::setHasSeenOnboarding(bool value) {
    write(hasSeenOnboardingKey, value);
}

bool Preferences::stayOnOneFileSystem() const {
    return readBool(stayOnOneFileSystemKey, false);
}
void Preferences::setStayOnOneFileSystem(bool value) {
    write(stayOnOneFileSystemKey, value);
}
bool Preferences::scanNetworkDrives() const {
    return readBool(scanNetworkDrivesKey, false);
}
void Preferences::setScanNetworkDrives(bool value) {
    write(scanNetworkDrivesKey, value);
}

ScanExclusions Preferences::exclusions() const {
    ScanExclusions exclusions;
    for (const QVariant &folder : m_settings.value(excludedFoldersKey).toList())
        exclusions.add(folder.toByteArray());
    for (const QString &pattern : m_settings.value(excludedPatternsKey).toStringList()) {
        if (!pattern.startsWith(u'/'))
            exclusions.add(pattern.toUtf8());
    }
    return exclusions;
}

QStringList Preferences::excludedFolderNames() const {
    QStringList names;
    for (const QByteArray &folder : exclusions().folders)
        names.append(displayText(folder));
    return names;
}

QStringList Preferences::excludedPatterns() const {
    QStringList patterns;
    for (const QByteArray &pattern : exclusions().patterns)
        patterns.append(QString::fromUtf8(pattern));
    return patterns;
}

void Preferences::writeExclusions(const ScanExclusions &exclusions) {
    QVariantList folders;
    for (const QByteArray &folder : exclusions.folders)
        folders.append(folder);
    QStringList patterns;
    for (const QByteArray &pattern : exclusions.patterns)
        patterns.append(QString::fromUtf8(pattern));
    m_settings.setValue(excludedFoldersKey, folders);
    m_settings.setValue(excludedPatternsKey, patterns);
    m_settings.sync();
    emit changed();
}

void Preferences::addExcludedFolder(const QByteArray &path) {
    if (!path.startsWith('/'))
        return;
    ScanExclusions exclusions = this->exclusions();
    const qsizetype before = exclusions.folders.size();
    exclusions.add(path);
    if (exclusions.folders.size() != before)
        writeExclusions(exclusions);
}

bool Preferences::addExclusion(const QString &typed) {
    QString trimmed = typed.trimmed();
    if (trimmed == u"~" || trimmed.startsWith(u"~/"))
        trimmed = QDir::homePath() + trimmed.mid(1);
    ScanExclusions exclusions = this->exclusions();
    const qsizetype before = exclusions.folders.size() + exclusions.patterns.size();
    exclusions.add(trimmed.startsWith(u'/') ? QFile::encodeName(trimmed) : trimmed.toUtf8());
    if (exclusions.folders.size() + exclusions.patterns.size() == before)
        return false;
    writeExclusions(exclusions);
    return true;
}

void Preferences::chooseExcludedFolder() {
    whenFinished(
        FinderService::shared().selectFolder(u"Choose a Folder to Exclude"_qs, QDir::homePath()),
        this, [this](const std::optional<QString> &path) {
            if (path && !path->isEmpty())
                addExcludedFolder(QFile::encodeName(*path));
        });
}

void Preferences::removeExcludedFolder(int index) {
    ScanExclusions exclusions = this->exclusions();
    if (index < 0 || index >= exclusions.folders.size())
        return;
    exclusions.folders.removeAt(index);
    writeExclusions(exclusions);
}

void Preferences::removeExcludedPattern(int index) {
    ScanExclusions exclusions = this->exclusions();
    if (index < 0 || index >= exclusions.patterns.size())
        return;
    exclusions.patterns.removeAt(index);
    writeExclusions(exclusions);
}

} // namespace ravelinth
