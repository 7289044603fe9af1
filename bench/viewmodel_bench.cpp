// Loads a whole tree into the view model (threshold 0, so every file is kept) and measures how
// long a sort change, a search keystroke and select-all take until the table has the new list.
//
//   viewmodel_bench TREE

#include "viewmodels/RavelinthViewModel.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <cstdio>
#include <sys/resource.h>

using namespace ravelinth;

namespace {

double waitForTable(RavelinthViewModel &model, const std::function<void()> &change) {
    QEventLoop loop;
    const auto connection = QObject::connect(&model, &RavelinthViewModel::displayedFilesChanged,
                                             &loop, &QEventLoop::quit);
    QElapsedTimer clock;
    clock.start();
    change();
    loop.exec();
    QObject::disconnect(connection);
    return double(clock.nsecsElapsed()) / 1e6;
}

long peakMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

} // namespace

int main(int argc, char **argv) {
    QCoreApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: viewmodel_bench TREE\n");
        return 2;
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    RavelinthViewModel model;
    model.setScanPath(QString::fromLocal8Bit(argv[1]));
    model.setMinFileSizeMB(0);
    model.setIncludeHiddenFiles(true);

    QElapsedTimer clock;
    clock.start();
    model.startScan();
    while (!model.scanState().isCompleted() || model.displayedCount() != model.fileCount())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    const double scanMs = double(clock.nsecsElapsed()) / 1e6;
    std::printf("scan and first publish of %d files: %.0f ms (peak %ld MiB)\n", model.fileCount(),
                scanMs, peakMiB());

    struct Step {
        const char *name;
        std::function<void()> change;
    };
    const Step steps[] = {
        {"sort by name (first time: collation keys)",
         [&] { model.setSortOption(SortOption::nameAscending); }},
        {"sort by name, descending", [&] { model.setSortOption(SortOption::nameDescending); }},
        {"sort by date", [&] { model.setSortOption(SortOption::dateNewest); }},
        {"sort by size", [&] { model.setSortOption(SortOption::sizeDescending); }},
        {"search keystroke \"p\"", [&] { model.setSearchText(u"p"_qs); }},
        {"search keystroke \"ph\"", [&] { model.setSearchText(u"ph"_qs); }},
        {"search cleared", [&] { model.setSearchText(QString()); }},
        {"category filter", [&] { model.setCategoryFilter(ScanCategory::image); }},
        {"filter cleared", [&] { model.setCategoryFilter(std::nullopt); }},
    };
    std::printf("\n%-45s %10s %10s\n", "change", "ms", "rows");
    for (const Step &step : steps) {
        const double ms = waitForTable(model, step.change);
        std::printf("%-45s %10.1f %10d\n", step.name, ms, model.displayedCount());
    }
    clock.restart();
    model.selectAll();
    std::printf("%-45s %10.1f %10d\n", "select all", double(clock.nsecsElapsed()) / 1e6,
                model.selectedCount());
    std::printf("\npeak memory %ld MiB\n", peakMiB());
    return 0;
}
