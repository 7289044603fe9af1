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

    Component {
        id: viewModelComponent
        RavelinthViewModel {}
    }
    Component {
        id: dashboardComponent
        Rectangle {
            property alias dashboard: dashboard
            property RavelinthViewModel viewModel
            width: 900
            height: 1000
            color: Theme.windowBackground
            DashboardView {
                id: dashboard
                anchors.fill: parent
                viewModel: parent.viewModel
            }
        }
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
        id: barComponent
        CategoryBar {
            width: 600
        }
    }

    function scanned(files, minimumMB) {
        const vm = createTemporaryObject(viewModelComponent, testCase)
        if (minimumMB !== undefined)
            vm.minFileSizeMB = minimumMB
        vm.scanPath = TestFiles.sparseTree(files)
        vm.startScan()
        tryVerify(() => vm.scanState.kind === "completed", 10000)
        return vm
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

    // An empty or nonsensical disk report draws an empty green ring, never a negative one.
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
        }
    }

    function test_categoryBarGrowsFromEmpty() {
        const bar = createTemporaryObject(barComponent, testCase, {
            stat: { category: "Videos", icon: "film", color: "#f43f5e", fileCount: 3, totalSize: 5e9 },
            percentage: 100
        })
        compare(bar.animatedWidth, 0)
        tryVerify(() => Math.abs(bar.animatedWidth - 100) < 0.1, 5000)
    }

    function test_cardsFollowTheViewModel() {
        const vm = createTemporaryObject(viewModelComponent, testCase)
        const view = createTemporaryObject(dashboardComponent, testCase, { viewModel: vm })
        // Before the first disk report and before any scan, the dashboard is an empty stack.
        const cards = view.dashboard
        compare([cards.diskCard, cards.summaryCard, cards.breakdownCard, cards.savingsCard],
                [null, null, null, null])
        tryVerify(() => view.dashboard.diskCard !== null, 10000)
        compare(view.dashboard.diskCard.diskInfo.name, vm.diskInfo.name)
    }

    // The savings card appears from the first safe byte on, and not without one.
    function test_savingsCardNeedsSafeFiles() {
        const none = scanned({ "movie.mp4": 200 * 1048576, "notes.pdf": 120 * 1048576 })
        const view = createTemporaryObject(dashboardComponent, testCase, { viewModel: none })
        verify(view.dashboard.summaryCard !== null && view.dashboard.breakdownCard !== null)
        compare(view.dashboard.savingsCard, null)

        view.viewModel = scanned({ "tiny.zip": 1 }, 0)
        tryVerify(() => view.dashboard.savingsCard !== null)
        compare(view.dashboard.savingsCard.detailText, "1 byte in 1 files marked safe to delete")
    }

    function test_dashboardAfterAScan() {
        const vm = scanned({
            "Movies/holiday.mp4": 2400 * 1048576, "Movies/clip.mkv": 900 * 1048576,
            "Downloads/tools.dmg": 1500 * 1048576, "Downloads/backup.zip": 700 * 1048576,
            "Downloads/sources.tar": 300 * 1048576, "Pictures/panorama.tiff": 250 * 1048576,
            "Documents/scans.pdf": 180 * 1048576, "Music/live.flac": 150 * 1048576,
            "Downloads/small.txt": 1048576
        })
        const view = createTemporaryObject(dashboardComponent, testCase, { viewModel: vm })
        tryVerify(() => view.dashboard.diskCard !== null, 10000)
        const summary = view.dashboard.summaryCard
        verify(summary !== null)
        compare(vm.fileCount, 8)
        verify(/^Completed in \d+\.\ds$/.test(summary.durationText), summary.durationText)

        const breakdown = view.dashboard.breakdownCard
        compare(breakdown.bars.count, vm.categoryStats.length)
        // The largest category's bar, once grown, spans its share of the total.
        const first = breakdown.bars.itemAt(0)
        const share = vm.categoryStats[0].totalSize / vm.totalScannedSize * 100
        compare(first.percentage, share)
        tryVerify(() => Math.abs(first.animatedWidth - share) < 0.1, 5000)

        const savings = view.dashboard.savingsCard
        compare([vm.potentialSavingsFileCount, savings.fileCount], [3, 3])
        compare(savings.detailText, vm.formatByteCount(vm.potentialSavings) + " in 3 files marked safe to delete")
        wait(600)
        grabImage(view).save("dashboard.png")
    }

    function test_compactDiskUsageShowsFreeSpace() {
        const compact = createTemporaryObject(Qt.createComponent("qrc:/Ravelinth/CompactDiskUsage.qml"), testCase, {
            diskInfo: { name: "Root", mountPoint: "/", totalBytes: 500e9, usedBytes: 450e9, freeBytes: 50e9, usagePercent: 90 }
        })
        compare([compact.freeText, compact.percentage], ["50 GB", 90])
    }
}
