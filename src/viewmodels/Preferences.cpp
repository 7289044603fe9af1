#include "viewmodels/Preferences.h"

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

} // namespace ravelinth
