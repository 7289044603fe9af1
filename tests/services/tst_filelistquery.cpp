// The list query answers from orders made once per list; every sort, with or without a filter,
// must equal a plain stable sort of the filtered files, ties in list order.

#include "services/FileListQuery.h"

#include <QCollator>
#include <QtTest>

#include <random>

using namespace ravelinth;

namespace {

QList<FileItem> makeFiles(unsigned seed, int count) {
    std::mt19937 random(seed);
    // "été" twice: composed, and with the accents as combining marks.
    const char *names[] = {"a.zip",     "A.zip",          "b.zip",
                           "photo.jpg", "Photo.jpg",      "clip.mov",
                           "été.txt",   "Zeta.iso",       "e\xcc\x81te\xcc\x81.txt",
                           "a.zip",     "notes",          "_x",
                           "Ärger",     "a photo 10.jpg", "a photo 9.jpg"};
    const char *folders[] = {"/home/u/Downloads/", "/home/u/tmp/", "/data/Photos/", "/x/"};
    QList<FileItem> files;
    for (int i = 0; i < count; ++i) {
        const QByteArray path =
            QByteArray(folders[random() % 4]) + names[random() % std::size(names)];
        // Few distinct sizes and dates, so most files tie with others.
        files.append(FileItem::make(path, qint64(random() % 5), qint64(random() % 4) * 1000,
                                    ScanCategory(ScanCategory::Value(random() % 9))));
    }
    // As a scan delivers them: largest first, ties in walk order.
    std::stable_sort(files.begin(), files.end(),
                     [](const FileItem &a, const FileItem &b) { return a.size > b.size; });
    return files;
}

QList<int> reference(const QList<FileItem> &files, const FileListQuery &query) {
    QList<int> rows;
    for (int i = 0; i < files.size(); ++i) {
        if (query.categoryFilter && files[i].category != *query.categoryFilter)
            continue;
        if (!query.searchText.isEmpty() && !matchesSearch(files[i], query.searchText))
            continue;
        rows.append(i);
    }
    QCollator collator{QLocale()};
    collator.setCaseSensitivity(Qt::CaseSensitive);
    const auto before = [&](int a, int b) {
        const FileItem &x = files[a];
        const FileItem &y = files[b];
        switch (query.sortOption) {
        case FileListSort::sizeDescending:
            return x.size > y.size;
        case FileListSort::sizeAscending:
            return x.size < y.size;
        case FileListSort::nameAscending:
            return collator.compare(x.displayName(), y.displayName()) < 0;
        case FileListSort::nameDescending:
            return collator.compare(x.displayName(), y.displayName()) > 0;
        case FileListSort::dateNewest:
            return x.modifiedMSecs > y.modifiedMSecs;
        case FileListSort::dateOldest:
            return x.modifiedMSecs < y.modifiedMSecs;
        }
        return false;
    };
    std::stable_sort(rows.begin(), rows.end(), before);
    return rows;
}

} // namespace

class FileListQueryTest : public QObject {
    Q_OBJECT

private slots:
    void everyOrderEqualsAStableSortOfTheFilteredFiles() {
        for (const char *locale : {"en_US", "C", "sv_SE"}) {
            QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
            const QList<FileItem> files = makeFiles(3, 3000);
            FileListOrders orders = computeFileListOrders(files);
            addNameOrder(orders, files);
            const FileListOrders withoutNames = computeFileListOrders(files);
            for (FileListSort option : allFileListSorts) {
                for (const QString &search : {QString(), u"PHOTO"_qs, u"tmp/a"_qs, u"é"_qs}) {
                    for (const auto &category :
                         {std::optional<ScanCategory>(),
                          std::optional<ScanCategory>(ScanCategory::archive)}) {
                        const FileListQuery query{category, search, option};
                        const QList<int> expected = reference(files, query);
                        QCOMPARE(queryFileList(files, query, orders), expected);
                        QCOMPARE(queryFileList(files, query, withoutNames), expected);
                        QCOMPARE(queryFileList(files, query), expected);
                    }
                }
            }
        }
        QLocale::setDefault(QLocale::system());
    }

    void aListNotLargestFirstIsSortedAnyway() {
        QList<FileItem> files = makeFiles(5, 500);
        std::reverse(files.begin(), files.end());
        const FileListOrders orders = computeFileListOrders(files);
        for (FileListSort option : {FileListSort::sizeDescending, FileListSort::sizeAscending}) {
            const FileListQuery query{std::nullopt, QString(), option};
            QCOMPARE(queryFileList(files, query, orders), reference(files, query));
        }
    }
};

QTEST_GUILESS_MAIN(FileListQueryTest)
#include "tst_filelistquery.moc"
