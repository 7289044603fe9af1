// Frame times of a Qt Quick window showing the real file table (DisplayedFilesModel in a
// TableView) with every file of a tree as a row, offscreen on the software renderer:
//   1. while another scan of the tree reports progress into a status line,
//   2. while the table scrolls through the rows, at a wheel's pace and at a fling's,
//   3. while the sort order changes (each change replaces all rows).
// A spinner runs throughout, so a frame is wanted on every tick. For each phase it prints the
// main thread's work per frame (from the update request to the frame's end) and the intervals
// between frames, as p50 / p95 / max.
//
//   frame_bench TREE

#include "viewmodels/RavelinthViewModel.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

using namespace ravelinth;

namespace {

const char *const windowQml = R"QML(
import QtQuick
Window {
    width: 1200; height: 800; visible: true
    property alias table: table
    Rectangle { anchors.fill: parent; color: "white" }
    Rectangle {
        id: spinner; x: 10; y: 10; width: 24; height: 24; color: "#3478f6"
        RotationAnimation on rotation { from: 0; to: 360; duration: 1000; loops: Animation.Infinite }
    }
    Text {
        x: 50; y: 6; width: 1100; elide: Text.ElideMiddle
        text: {
            const state = scanning.scanState
            return state.kind === "scanning"
                ? "Scanning: " + state.filesScanned + " files \u2022 "
                  + scanning.formatByteCount(state.bytesScanned) + " \u2014 " + state.currentFile
                : state.statusMessage
        }
    }
    Text { x: 50; y: 26; text: listing.displayedCount + " files shown" }
    TableView {
        id: table
        anchors.fill: parent; anchors.topMargin: 50
        clip: true
        model: listing.displayedFiles
        columnWidthProvider: function(column) { return [40, 460, 120, 140, 200, 120][column] }
        delegate: Rectangle {
            required property int row
            required property int column
            required property string name
            required property string sizeText
            required property string category
            required property string categoryColor
            required property double modifiedMSecs
            required property bool isSafeToDelete
            required property bool selected
            implicitHeight: 28
            color: selected ? "#d6e4ff" : (row % 2 ? "#f6f6f6" : "white")
            Rectangle {
                visible: column === 0; anchors.centerIn: parent; width: 14; height: 14; radius: 7
                color: categoryColor
            }
            Text {
                visible: column > 0
                anchors.verticalCenter: parent.verticalCenter; x: 8; width: parent.width - 16
                elide: Text.ElideMiddle
                text: column === 1 ? name : column === 2 ? sizeText : column === 3 ? category
                    : column === 4 ? new Date(modifiedMSecs).toLocaleDateString()
                    : isSafeToDelete ? "Safe" : "Review"
            }
        }
    }
}
)QML";

struct Phase {
    std::vector<double> work;
    std::vector<double> intervals;
};

double percentile(std::vector<double> values, double p) {
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(p * double(values.size() - 1) + 0.5))];
}

void print(const char *name, const Phase &phase) {
    std::printf("%-34s %6zu %8.1f %8.1f %8.1f %10.1f %8.1f %8.1f\n", name, phase.work.size(),
                percentile(phase.work, 0.5), percentile(phase.work, 0.95),
                percentile(phase.work, 1.0), percentile(phase.intervals, 0.5),
                percentile(phase.intervals, 0.95), percentile(phase.intervals, 1.0));
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
    QGuiApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: frame_bench TREE\n");
        return 2;
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const QString tree = QString::fromLocal8Bit(argv[1]);

    // The table's rows: every file of the tree.
    RavelinthViewModel listing;
    listing.setScanPath(tree);
    listing.setMinFileSizeMB(0);
    listing.setIncludeHiddenFiles(true);
    // The scan whose progress the status line shows.
    RavelinthViewModel scanning;
    scanning.setScanPath(tree);
    scanning.setIncludeHiddenFiles(true);

    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty(u"listing"_qs, &listing);
    engine.rootContext()->setContextProperty(u"scanning"_qs, &scanning);
    engine.loadData(windowQml);
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (!window)
        return 1;
    FrameClock frames(window);

    Phase loading, progress, scrolling, sorting;
    frames.begin(&loading);
    listing.startScan();
    runFor(600000, [&] {
        return listing.scanState().isCompleted() && listing.displayedCount() == listing.fileCount();
    });
    runFor(3000); // the orders of the new list settle
    std::printf("table rows: %d\n\n", listing.displayedCount());
    if (const QString shot = qEnvironmentVariable("FRAME_BENCH_SCREENSHOT"); !shot.isEmpty())
        window->grabWindow().save(shot);

    frames.begin(&progress);
    scanning.startScan();
    runFor(600000, [&] { return scanning.scanState().isCompleted(); });

    QObject *table = window->property("table").value<QObject *>();
    const auto scroll = [&](Phase &phase, double rowsPerSecond) {
        frames.begin(&phase);
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 4000) {
            table->setProperty("contentY", double(clock.elapsed()) / 1000.0 * rowsPerSecond * 28.0);
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        }
        table->setProperty("contentY", 0.0);
    };
    // A wheel's pace, and a fling's: at 4,000 rows a second no row stays in view two frames.
    scroll(scrolling, 1000);
    Phase flinging;
    scroll(flinging, 4000);

    frames.begin(&sorting);
    for (int round = 0; round < 3; ++round) {
        for (SortOption option : SortOption::allCases()) {
            listing.setSortOption(option);
            runFor(300);
        }
    }
    frames.begin(nullptr);

    std::printf("%-34s %6s %8s %8s %8s %10s %8s %8s\n", "phase", "frames", "work p50", "p95", "max",
                "interval", "p95", "max");
    print("first scan (threshold 0) + publish", loading);
    print("scan progress over 1M rows", progress);
    print("scrolling 1M rows, 1,000 rows/s", scrolling);
    print("scrolling 1M rows, 4,000 rows/s", flinging);
    print("sort changes (1M rows replaced)", sorting);
    std::printf("\n(milliseconds; work: from the update request to the end of rendering, on the "
                "main thread)\n");
    return 0;
}
