#include "models/FileItem.h"

#include "models/AsciiText.h"
#include "models/FastUuid.h"
#include "models/FolderIndicators.h"

#include <algorithm>

namespace ravelinth {

FileItem FileItem::make(QByteArray path, qint64 size, qint64 modifiedMSecs, ScanCategory category,
                        std::uint32_t linkCount) {
    FileItem item;
    item.id = makeFastUuid();
    item.path = std::move(path);
    item.size = size;
    item.modifiedMSecs = modifiedMSecs;
    item.category = category;
    item.linkCount = linkCount;
    const QByteArrayView name = item.name();
    // A name longer than the system allows is not one a walk meets; it is left to the slow path.
    constexpr qsizetype longestName = 255;
    item.nameKind = name.size() <= longestName && isPrintableAscii(name) ? NameKind::printableAscii
                                                                         : NameKind::other;
    std::copy_n(name.begin(), std::min<qsizetype>(name.size(), qsizetype(item.nameHead.size())),
                item.nameHead.begin());
    return item;
}

QByteArrayView lastPathComponent(QByteArrayView path) {
    qsizetype end = path.size();
    // "/a/b/" names "b", as a last-path-component operation gives it.
    while (end > 1 && path[end - 1] == '/')
        --end;
    const qsizetype slash = path.first(end).lastIndexOf('/');
    if (slash < 0)
        return path.first(end);
    if (end == 1 && slash == 0)
        return path.first(1);
    return path.sliced(slash + 1, end - slash - 1);
}

QString fileExtensionOf(QByteArrayView name) {
    const qsizetype dot = name.lastIndexOf('.');
    if (dot <= 0 || dot == name.size() - 1)
        return {};
    return QString::fromUtf8(name.sliced(dot + 1)).toLower();
}

QByteArrayView FileItem::name() const {
    return lastPathComponent(path);
}

QByteArrayView FileItem::parentPath() const {
    const QByteArrayView view(path);
    const qsizetype slash = view.lastIndexOf('/');
    if (slash < 0)
        return {};
    if (slash == 0)
        return view.first(1);
    return view.first(slash);
}

QString FileItem::fileExtension() const {
    return fileExtensionOf(name());
}

bool FileItem::isSafeToDelete() const {
    switch (category) {
    case ScanCategory::installer:
    case ScanCategory::archive:
    case ScanCategory::cache:
        return true;
    default:
        return isDefinitelySafe();
    }
}

bool FileItem::isDefinitelySafe() const {
    return isInIndicatedFolder(path, FolderIndicators::safe);
}

} // namespace ravelinth
