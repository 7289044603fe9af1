#include "models/ScanCategory.h"

#include "models/FileTypeDefinition.h"
#include "models/FolderIndicators.h"

namespace ravelinth {

const std::array<ScanCategory, ScanCategory::count> &ScanCategory::allCases() {
    static const std::array<ScanCategory, count> cases{
        installer, archive, video, image, document, audio, application, cache, other};
    return cases;
}

QString ScanCategory::rawValue() const {
    switch (m_value) {
    case installer:
        return u"Installers"_qs;
    case archive:
        return u"Archives"_qs;
    case video:
        return u"Videos"_qs;
    case image:
        return u"Images"_qs;
    case document:
        return u"Documents"_qs;
    case audio:
        return u"Audio"_qs;
    case application:
        return u"Applications"_qs;
    case cache:
        return u"Cache"_qs;
    case other:
        break;
    }
    return u"Other"_qs;
}

std::optional<ScanCategory> ScanCategory::fromRawValue(QStringView rawValue) {
    for (ScanCategory category : allCases()) {
        if (category.rawValue() == rawValue)
            return category;
    }
    return std::nullopt;
}

QString ScanCategory::icon() const {
    switch (m_value) {
    case installer:
        return u"externaldrive.badge.plus"_qs;
    case archive:
        return u"doc.zipper"_qs;
    case video:
        return u"film"_qs;
    case image:
        return u"photo"_qs;
    case document:
        return u"doc.text"_qs;
    case audio:
        return u"music.note"_qs;
    case application:
        return u"app.badge"_qs;
    case cache:
        return u"trash"_qs;
    case other:
        break;
    }
    return u"doc"_qs;
}

const Color &ScanCategory::color() const {
    switch (m_value) {
    case installer:
        return Color::categoryInstaller();
    case archive:
        return Color::categoryArchive();
    case video:
        return Color::categoryVideo();
    case image:
        return Color::categoryImage();
    case document:
        return Color::categoryDocument();
    case audio:
        return Color::categoryAudio();
    case application:
        return Color::categoryApplication();
    case cache:
        return Color::categoryCache();
    case other:
        break;
    }
    return Color::categoryOther();
}

ScanCategory ScanCategory::from(QStringView extension) {
    const QString lower = extension.toString().toLower();
    if (FileTypeDefinition::installerExtensions().contains(lower))
        return installer;
    if (FileTypeDefinition::archiveExtensions().contains(lower))
        return archive;
    if (FileTypeDefinition::videoExtensions().contains(lower))
        return video;
    if (FileTypeDefinition::imageExtensions().contains(lower))
        return image;
    if (FileTypeDefinition::documentExtensions().contains(lower))
        return document;
    if (FileTypeDefinition::audioExtensions().contains(lower))
        return audio;
    if (lower == u"app")
        return application;
    return other;
}

bool ScanCategory::isInCacheDirectory(QStringView path) {
    return isInIndicatedFolder(path, FolderIndicators::cache);
}

bool ScanCategory::isInCacheDirectory(QByteArrayView path) {
    return isInIndicatedFolder(path, FolderIndicators::cache);
}

} // namespace ravelinth
