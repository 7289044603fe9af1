import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

TestCase {
    id: testCase
    name: "Dashboard"
    when: windowShown
    visible: true
    width: 900
    height: 1000

    // Whether the test used the process's root, which is then put back for the next one. Tests
    // that do not leave it alone: the first to read it still sees it before its disk report.
    property bool usedRoot: false
    RootReset {
        id: rootReset
    }
    function cleanup() {
        if (usedRoot)
            rootReset.reset(testCase)
        usedRoot = false
    }

    Component {
        id: dashboardComponent
        DashboardView {
            width: 900
            height: 1000
        }
    }
    // The dashboard's cards by name: diskCard, summaryCard, breakdownCard, savingsCard; null
    // while not shown.
    function card(view, name) {
        return findChild(view, name.replace("Card", "Loader")).item
    }
    Component {
        id: badgeComponent
        StatusBadge {}
    }
    Component {
        id: diskCardComponent
        DiskUsageCard {
            width: 700
        }
    }
    Component {
        id: compactComponent
        CompactDiskUsage {}
    }

    function scanned(files, minimumMB) {
        usedRoot = true
        if (minimumMB !== undefined)
            RavelinthViewModel.scan.minFileSizeMB = minimumMB
        RavelinthViewModel.scan.path = TestFiles.sparseTree(files)
        RavelinthViewModel.scan.start()
        tryVerify(() => RavelinthViewModel.scan.state.phase === ScanPhase.Completed, 10000)
    }

    // Each band starts exactly at its threshold; the badge's text, icon and colour go together.
    function test_badgeThresholdsAreStrict() {
        const healthy = ["Healthy", "checkmark.circle.fill", Theme.diskGreen]
        const moderate = ["Moderate", "exclamationmark.triangle.fill", Theme.diskYellow]
        const critical = ["Critical", "exclamationmark.octagon.fill", Theme.diskRed]
        for (const [percentage, expected] of [[-12, healthy], [0, healthy], [69.999, healthy],
                                              [70, moderate], [84.999, moderate], [85, critical],
                                              [100, critical]]) {
            const badge = createTemporaryObject(badgeComponent, testCase, { percentage: percentage })
            compare([badge.text, badge.icon, badge.color], expected, "at " + percentage + " %")
        }
    }

    // An empty or nonsensical disk report draws an empty green ring, never a negative one; the
    // ring settles on its value.
    function test_diskCardClampsAndColoursUsage() {
        for (const [total, used, ring, colour, badge] of [[0, 0, 0, Theme.diskGreen, "Healthy"],
                                                          [1000, -200, 0, Theme.diskGreen, "Healthy"],
                                                          [1000, 700, 70, Theme.diskYellow, "Moderate"],
                                                          [1000, 850, 85, Theme.diskRed, "Critical"]]) {
            const card = createTemporaryObject(diskCardComponent, testCase, {
                diskInfo: { name: "Root", mountPoint: "/", totalBytes: total, usedBytes: used,
                            freeBytes: total - used, usagePercent: total ? used / total * 100 : 0 }
            })
            compare([card.ring.progress, card.usageColor, card.badge.text], [ring, colour, badge],
                    "used " + used)
            tryCompare(card.ring, "animatedProgress", ring, 3000, "used " + used)
        }
    }

    function test_cardsFollowTheViewModel() {
        // The first test of the process to read the root: it has made no disk report yet.
        usedRoot = true
        const view = createTemporaryObject(dashboardComponent, testCase)
        // Before the first disk report and before any scan, the dashboard is an empty stack.
        compare(["diskCard", "summaryCard", "breakdownCard", "savingsCard"].map(
                    name => card(view, name)), [null, null, null, null])
        tryVerify(() => card(view, "diskCard") !== null, 10000)
        verify(RavelinthViewModel.disk.available)
        compare(card(view, "diskCard").diskInfo.name, RavelinthViewModel.disk.info.name)
    }

    // The savings card appears from the first safe byte on, and not without one.
    function test_savingsCardNeedsSafeFiles() {
        scanned({ "movie.mp4": 200 * 1048576, "notes.pdf": 120 * 1048576 })
        const view = createTemporaryObject(dashboardComponent, testCase)
        verify(card(view, "summaryCard") !== null && card(view, "breakdownCard") !== null)
        compare(card(view, "savingsCard"), null)

        scanned({ "tiny.zip": 1 }, 0)
        tryVerify(() => card(view, "savingsCard") !== null)
        compare(card(view, "savingsCard").detailText, "1 byte in 1 files marked safe to delete")
    }

    function test_dashboardAfterAScan() {
        scanned({
            "Movies/holiday.mp4": 2400 * 1048576, "Movies/clip.mkv": 900 * 1048576,
            "Downloads/tools.dmg": 1500 * 1048576, "Downloads/backup.zip": 700 * 1048576,
            "Downloads/sources.tar": 300 * 1048576, "Pictures/panorama.tiff": 250 * 1048576,
            "Documents/scans.pdf": 180 * 1048576, "Music/live.flac": 150 * 1048576,
            "Downloads/small.txt": 1048576
        })
        const view = createTemporaryObject(dashboardComponent, testCase)
        tryVerify(() => card(view, "diskCard") !== null, 10000)
        const summary = card(view, "summaryCard")
        verify(summary !== null)
        compare(RavelinthViewModel.fileList.fileCount, 8)
        verify(/^Completed in \d+\.\ds$/.test(summary.durationText), summary.durationText)

        const bars = findChild(card(view, "breakdownCard"), "bars")
        compare(bars.count, RavelinthViewModel.categoryStats.count)
        // The largest category's bar, once grown, spans its share of the total.
        const first = bars.itemAt(0)
        for (let i = 1; i < bars.count; ++i)
            verify(bars.itemAt(i).totalSize <= first.totalSize, bars.itemAt(i).name)
        compare([first.name, first.totalSize], ["Videos", 3300 * 1048576])
        const share = first.totalSize / RavelinthViewModel.fileList.totalScannedSize * 100
        compare(first.percentage, share)
        tryVerify(() => Math.abs(first.animatedWidth - share) < 0.1, 5000)

        const savings = card(view, "savingsCard")
        compare([RavelinthViewModel.fileList.potentialSavingsFileCount, savings.fileCount], [3, 3])
        compare(savings.detailText, TextFormat.byteCount(RavelinthViewModel.fileList.potentialSavings, false) + " in 3 files marked safe to delete")
    }

    function test_compactDiskUsageShowsFreeSpace() {
        const compact = createTemporaryObject(compactComponent, testCase, {
            diskInfo: { name: "Root", mountPoint: "/", totalBytes: 500e9, usedBytes: 450e9, freeBytes: 50e9, usagePercent: 90 }
        })
        compare([compact.freeText, compact.percentage], ["50 GB", 90])
    }
}
