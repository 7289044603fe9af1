#include "models/FileTypeDefinition.h"

namespace ravelinth {

const QSet<QString> &FileTypeDefinition::installerExtensions() {
    static const QSet<QString> set{u"dmg"_qs, u"pkg"_qs, u"iso"_qs, u"app"_qs};
    return set;
}

const QSet<QString> &FileTypeDefinition::archiveExtensions() {
    static const QSet<QString> set{u"zip"_qs, u"tar"_qs, u"gz"_qs, u"rar"_qs,
                                   u"7z"_qs,  u"bz2"_qs, u"xz"_qs, u"tgz"_qs};
    return set;
}

const QSet<QString> &FileTypeDefinition::videoExtensions() {
    static const QSet<QString> set{u"mp4"_qs, u"mov"_qs, u"mkv"_qs,  u"avi"_qs,
                                   u"wmv"_qs, u"flv"_qs, u"webm"_qs, u"m4v"_qs};
    return set;
}

const QSet<QString> &FileTypeDefinition::imageExtensions() {
    static const QSet<QString> set{u"jpg"_qs,  u"jpeg"_qs, u"png"_qs,  u"gif"_qs,
                                   u"heic"_qs, u"raw"_qs,  u"tiff"_qs, u"bmp"_qs,
                                   u"svg"_qs,  u"webp"_qs, u"ico"_qs};
    return set;
}

const QSet<QString> &FileTypeDefinition::documentExtensions() {
    static const QSet<QString> set{u"pdf"_qs,  u"doc"_qs,   u"docx"_qs,    u"xls"_qs,
                                   u"xlsx"_qs, u"ppt"_qs,   u"pptx"_qs,    u"txt"_qs,
                                   u"rtf"_qs,  u"pages"_qs, u"numbers"_qs, u"keynote"_qs};
    return set;
}

const QSet<QString> &FileTypeDefinition::audioExtensions() {
    static const QSet<QString> set{u"mp3"_qs, u"wav"_qs, u"aac"_qs, u"flac"_qs,
                                   u"m4a"_qs, u"wma"_qs, u"ogg"_qs, u"aiff"_qs};
    return set;
}

} // namespace ravelinth
