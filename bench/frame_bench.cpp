// Frame times of the program's own window, offscreen on the software renderer, with every file of
// a tree in its file table:
//   1. while a scan of the tree (keeping every file) reports progress,
//   2. while the table of the million rows scrolls, at a wheel's pace and at a fling's,
//   3. while the sort order changes (each change replaces all rows),
//   4. while a second scan reports progress.
// For each phase it prints the main thread's work per frame (from the update request to the end
// of the frame's rendering) and the intervals between frames, as p50 / p95 / max. Intervals mean
// something only where the window animates on its own (the scans' indicator, the scrolling).
//
//   frame_bench TREE

#include "QmlTypes.h"
#include "viewmodels/Preferences.h"
#include "viewmodels/RavelinthViewModel.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTemporaryDir>
#include <QTimer>
#include <QtQml/qqmlextensionplugin.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

Q_IMPORT_QML_PLUGIN(RavelinthPlugin)

using namespace ravelinth;

namespace {

struct Phase {
    std::vector<double> work;
    std::vector<double> intervals;
    // The longest single event the main thread handled, and what it was.
    double longestEvent = 0;
    QByteArray longestEventWhat;
};

Phase *currentPhase = nullptr;

// Times each event the main loop delivers (not the ones delivered inside another), so a stall
// that no frame shows, because no frame was asked for during it, is seen as well.
class TimingApplication : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;
    bool notify(QObject *receiver, QEvent *event) override {
        if (m_depth > 0 || !currentPhase)
            return QGuiApplication::notify(receiver, event);
        ++m_depth;
        QElapsedTimer clock;
        clock.start();
        // The receiver may be gone by the end: a single-shot timer's slot object deletes itself.
        const QEvent::Type type = event->type();
        const char *receiverClass = receiver->metaObject()->className();
        const bool result = QGuiApplication::notify(receiver, event);
        const double ms = double(clock.nsecsElapsed()) / 1e6;
        --m_depth;
        if (currentPhase && ms > currentPhase->longestEvent) {
            currentPhase->longestEvent = ms;
            currentPhase->longestEventWhat =
                QByteArray(receiverClass) + " event " + QByteArray::number(int(type));
        }
        return result;
    }

private:
    int m_depth = 0;
};

double percentile(std::vector<double> values, double p) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(p * double(values.size() - 1) + 0.5))];
}

void print(const char *name, const Phase &phase) {
    std::printf("%-34s %6zu %8.1f %8.1f %8.1f %10.1f %8.1f %8.1f %9.1f  %s\n", name,
                phase.work.size(), percentile(phase.work, 0.5), percentile(phase.work, 0.95),
                percentile(phase.work, 1.0), percentile(phase.intervals, 0.5),
                percentile(phase.intervals, 0.95), percentile(phase.intervals, 1.0),
                phase.longestEvent, phase.longestEventWhat.constData());
}

// Times every frame of `window`: from the update request that starts it to the end of its
// rendering, and from one frame's end to the next.
class FrameClock : public QObject {
public:
    explicit FrameClock(QQuickWindow *window) : m_window(window) {
        window->installEventFilter(this);
        connect(
            window, &QQuickWindow::afterRendering, this, [this] { frameEnded(); },
            Qt::DirectConnection);
        m_clock.start();
    }
    void begin(Phase *phase) {
        m_phase = phase;
        currentPhase = phase;
        m_lastEnd = -1;
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override {
        if (watched == m_window && event->type() == QEvent::UpdateRequest && m_start < 0)
            m_start = now();
        return false;
    }

private:
    double now() const { return double(m_clock.nsecsElapsed()) / 1e6; }
    void frameEnded() {
        const double end = now();
        if (m_phase && m_start >= 0)
            m_phase->work.push_back(end - m_start);
        if (m_phase && m_lastEnd >= 0)
            m_phase->intervals.push_back(end - m_lastEnd);
        m_lastEnd = end;
        m_start = -1;
    }

    QQuickWindow *m_window;
    QElapsedTimer m_clock;
    Phase *m_phase = nullptr;
    double m_start = -1;
    double m_lastEnd = -1;
};

void runFor(int ms, const std::function<bool()> &until = {}) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < ms && !(until && until()))
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

} // namespace

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    // A settings folder of its own, where the tutorial has already been seen.
    QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings.path()));
    TimingApplication app(argc, argv);
    if (argc >= 2 && (!std::strcmp(argv[1], "--help") || !std::strcmp(argv[1], "-h"))) {
        std::printf("usage: frame_bench TREE\n");
        return 0;
    }
    if (argc < 2 || argv[1][0] == '-') {
        std::fprintf(stderr, "usage: frame_bench TREE\n");
        return 2;
    }
    QGuiApplication::setOrganizationName(u"Ravelinth"_qs);
    QGuiApplication::setApplicationName(u"Ravelinth"_qs);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    Preferences().setHasSeenOnboarding(true);
    const QString tree = QString::fromLocal8Bit(argv[1]);

    RavelinthViewModel viewModel;
    auto *model = &viewModel;
    views::RavelinthViewModelForeign::setProvider([model] { return model; });
    QQmlApplicationEngine engine;
    engine.load(QUrl(u"qrc:/qt-project.org/imports/Ravelinth/Main.qml"_qs));
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    QObject *table = window ? window->findChild<QObject *>(u"fileTable"_qs) : nullptr;
    if (!table) {
        std::fprintf(stderr, "the window did not load\n");
        return 1;
    }
    FrameClock frames(window);
    runFor(1000);

    Phase progress, scrolling, flinging, sorting, rescan;
    model->setScanPath(tree);
    model->setMinFileSizeMB(0);
    model->setIncludeHiddenFiles(true);
    frames.begin(&progress);
    model->startScan();
    runFor(600000, [&] {
        return model->scanState().isCompleted() && model->displayedCount() == model->fileCount();
    });
    frames.begin(nullptr);
    runFor(3000); // the orders of the new list settle
    std::printf("table rows: %d\n\n", model->displayedCount());
    if (const QString shot = qEnvironmentVariable("FRAME_BENCH_SCREENSHOT"); !shot.isEmpty())
        window->grabWindow().save(shot);

    const double rowHeight =
        table->property("contentHeight").toDouble() / std::max(1, model->displayedCount());
    const auto scroll = [&](Phase &phase, double rowsPerSecond) {
        frames.begin(&phase);
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 4000) {
            table->setProperty("contentY",
                               double(clock.elapsed()) / 1000.0 * rowsPerSecond * rowHeight);
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        table->setProperty("contentY", 0.0);
        frames.begin(nullptr);
        runFor(300);
    };
    // A wheel's pace, and a fling's: at 4,000 rows a second no row stays in view two frames.
    scroll(scrolling, 1000);
    scroll(flinging, 4000);

    frames.begin(&sorting);
    for (int round = 0; round < 3; ++round) {
        for (SortOption option : SortOption::allCases()) {
            model->setSortOption(option);
            runFor(300);
        }
    }

    frames.begin(&rescan);
    model->setMinFileSizeMB(100);
    model->startScan();
    runFor(600000, [&] { return model->scanState().isCompleted(); });
    frames.begin(nullptr);

    std::printf("%-34s %6s %8s %8s %8s %10s %8s %8s %9s\n", "phase", "frames", "work p50", "p95",
                "max", "interval", "p95", "max", "longest");
    print("scan keeping every file, progress", progress);
    print("scrolling 1M rows, 1,000 rows/s", scrolling);
    print("scrolling 1M rows, 4,000 rows/s", flinging);
    print("sort changes (1M rows replaced)", sorting);
    print("second scan (100 MB), progress", rescan);
    std::printf("\n(milliseconds; work: from the update request to the end of rendering, on the "
                "main thread;\n"
                " longest: the longest single event the main loop handled, and its receiver)\n");
    return 0;
}
