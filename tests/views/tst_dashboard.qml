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

    function test_badgeThresholdsAreStrict() {
        const cases = [[-12, "Healthy"], [0, "Healthy"], [69.999, "Healthy"], [70, "Moderate"],
                       [84.999, "Moderate"], [85, "Critical"], [100, "Critical"]]
        for (const [percentage, text] of cases) {
            const badge = createTemporaryObject(badgeComponent, testCase, { percentage: percentage })
            compare(badge.text, text, "at " + percentage + " %")
        }
        const badge = createTemporaryObject(badgeComponent, testCase, { percentage: 70 })
        compare(badge.icon, "exclamationmark.triangle.fill")
        compare(badge.color, Theme.diskYellow)
        badge.percentage = 85
        compare(badge.icon, "exclamationmark.octagon.fill")
        compare(badge.color, Theme.diskRed)
    }

    function test_diskCardClampsAndColoursUsage() {
        const empty = createTemporaryObject(diskCardComponent, testCase, {
            diskInfo: { name: "Root", mountPoint: "/", totalBytes: 0, usedBytes: 0, freeBytes: 0, usagePercent: 0 }
        })
        compare(empty.percentage, 0)
        compare(empty.ring.progress, 0)
        compare(empty.usageColor, Theme.diskGreen)
        compare(empty.badge.text, "Healthy")

        const negative = createTemporaryObject(diskCardComponent, testCase, {
            diskInfo: { name: "Root", mountPoint: "/", totalBytes: 1000, usedBytes: -200, freeBytes: 1200, usagePercent: -20 }
        })
        verify(negative.percentage < 0)
        compare(negative.ring.progress, 0)
        compare(negative.usageColor, Theme.diskGreen)
        compare(negative.badge.text, "Healthy")

        const seventy = createTemporaryObject(diskCardComponent, testCase, {
            diskInfo: { name: "Root", mountPoint: "/", totalBytes: 1000, usedBytes: 700, freeBytes: 300, usagePercent: 70 }
        })
        compare(seventy.usageColor, Theme.diskYellow)
        compare(seventy.badge.text, "Moderate")
        const full = createTemporaryObject(diskCardComponent, testCase, {
            diskInfo: { name: "Root", mountPoint: "/", totalBytes: 1000, usedBytes: 850, freeBytes: 150, usagePercent: 85 }
        })
        compare(full.usageColor, Theme.diskRed)
        compare(full.ring.progress, 85)
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
        compare(view.dashboard.diskCard, null)
        compare(view.dashboard.summaryCard, null)
        compare(view.dashboard.breakdownCard, null)
        compare(view.dashboard.savingsCard, null)
        tryVerify(() => view.dashboard.diskCard !== null, 10000)
        compare(view.dashboard.diskCard.diskInfo.name, vm.diskInfo.name)
    }

    function test_scanWithoutSafeFilesHasNoSavingsCard() {
        const vm = scanned({ "movie.mp4": 200 * 1048576, "notes.pdf": 120 * 1048576 })
        const view = createTemporaryObject(dashboardComponent, testCase, { viewModel: vm })
        verify(view.dashboard.summaryCard !== null)
        verify(view.dashboard.breakdownCard !== null)
        compare(vm.potentialSavings, 0)
        compare(view.dashboard.savingsCard, null)
    }

    function test_oneSafeByteShowsTheSavingsCard() {
        const vm = scanned({ "tiny.zip": 1 }, 0)
        const view = createTemporaryObject(dashboardComponent, testCase, { viewModel: vm })
        compare(vm.potentialSavings, 1)
        verify(view.dashboard.savingsCard !== null)
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
        compare(vm.potentialSavingsFileCount, 3)
        compare(savings.fileCount, 3)
        compare(savings.detailText, vm.formatByteCount(vm.potentialSavings) + " in 3 files marked safe to delete")
        wait(600)
        grabImage(view).save("dashboard.png")
    }

    function test_compactDiskUsageShowsFreeSpace() {
        const compact = createTemporaryObject(Qt.createComponent("qrc:/Ravelinth/CompactDiskUsage.qml"), testCase, {
            diskInfo: { name: "Root", mountPoint: "/", totalBytes: 500e9, usedBytes: 450e9, freeBytes: 50e9, usagePercent: 90 }
        })
        compare(compact.freeText, "50 GB")
        compare(compact.percentage, 90)
    }
}
