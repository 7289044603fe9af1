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
        case SortOption::sizeDescending:
            return x.size > y.size;
        case SortOption::sizeAscending:
            return x.size < y.size;
        case SortOption::nameAscending:
            return collator.compare(x.displayName(), y.displayName()) < 0;
        case SortOption::nameDescending:
            return collator.compare(x.displayName(), y.displayName()) > 0;
        case SortOption::dateNewest:
            return x.modifiedMSecs > y.modifiedMSecs;
        case SortOption::dateOldest:
            return x.modifiedMSecs < y.modifiedMSecs;
        }
        return false;
    };
    std::stable_sort(rows.begin(), rows.end(), before);
    return rows;
}

// The orders made for `files` under each locale answer every one of `options` as a plain stable
// sort would.
void checkOrders(const QList<FileItem> &files, const QList<const char *> &locales,
                 const QList<SortOption> &options) {
    for (const char *locale : locales) {
        QLocale::setDefault(QLocale(QString::fromLatin1(locale)));
        FileListOrders orders = computeFileListOrders(files);
        addNameOrder(orders, files);
        for (SortOption option : options) {
            const FileListQuery query{std::nullopt, QString(), option};
            QCOMPARE(queryFileList(files, query, orders), reference(files, query));
        }
    }
    QLocale::setDefault(QLocale::system());
}

const QList<SortOption> nameOrders{SortOption::nameAscending, SortOption::nameDescending};

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
            for (SortOption option : SortOption::allCases()) {
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

    // Mostly plain ASCII names, ordered by the ASCII table, with a few others among them that
    // are put in place one by one; ties must still come in list order.
    void aFewOtherNamesAmongManyAsciiOnes() {
        std::mt19937 random(7);
        const char *others[] = {"\xc3\xa9t\xc3\xa9", "\xc3\x84rger",  "\xff\xfe",
                                "na\xc3\xafve",      "a\xe2\x80\x8b", "Z\xcc\x81"};
        const char alphabet[] = "aAbBzZ09 ._-~";
        QList<FileItem> files;
        for (int i = 0; i < 6000; ++i) {
            QByteArray name;
            if (i % 500 == 0) {
                name = others[random() % std::size(others)];
            } else {
                for (int length = 1 + int(random() % 4); length > 0; --length)
                    name += alphabet[random() % (sizeof alphabet - 1)];
            }
            FileItem file = FileItem::make("/t/" + name, qint64(6000 - i), 0, ScanCategory::other);
            // Records not made by make() have their names read from the path.
            if (i % 7 == 0)
                file.nameKind = FileItem::NameKind::unknown;
            files.append(file);
        }
        checkOrders(files, {"en_US", "C", "sv_SE"}, nameOrders);
    }

    // Names that share their first letters, and differ anywhere from the first to past the
    // sixteenth, and some that tie; once with the ASCII table, once with library keys for all
    // (one name in eight is not ASCII). Enough of them that each half of the list is sorted by
    // prefix passes rather than by comparisons alone.
    void longNamesSharingTheirFirstLetters() {
        std::mt19937 random(11);
        const char *starts[] = {"",
                                "build_",
                                "build_out",
                                "build_output_o",
                                "build_output_of_",
                                "Build_output_of_the_night_"};
        const char alphabet[] = "aAbB09_.";
        for (const bool someNotAscii : {false, true}) {
            QList<FileItem> files;
            for (int i = 0; i < 10000; ++i) {
                QByteArray name = starts[random() % std::size(starts)];
                for (int length = 1 + int(random() % 12); length > 0; --length)
                    name += alphabet[random() % (sizeof alphabet - 1)];
                if (someNotAscii && i % 8 == 0)
                    name += "\xc3\xa9";
                files.append(
                    FileItem::make("/t/" + name, qint64(10000 - i), 0, ScanCategory::other));
            }
            checkOrders(files, {"en_US", "sv_SE"}, nameOrders);
        }
    }

    void aListNotLargestFirstIsSortedAnyway() {
        QList<FileItem> files = makeFiles(5, 500);
        std::reverse(files.begin(), files.end());
        checkOrders(files, {"C"}, {SortOption::sizeDescending, SortOption::sizeAscending});
    }
};

QTEST_GUILESS_MAIN(FileListQueryTest)
#include "tst_filelistquery.moc"
