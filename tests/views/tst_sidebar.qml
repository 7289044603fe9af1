import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

TestCase {
    id: testCase
    name: "Sidebar"
    when: windowShown
    visible: true
    width: 260
    height: 820

    readonly property var vm: RavelinthViewModel
    RootReset {
        id: rootReset
    }
    function initTestCase() {
        rootReset.reset(testCase)
    }
    function cleanup() {
        rootReset.reset(testCase)
    }
    // The sidebar's parts, by name.
    function part(sidebar, name) {
        return findChild(sidebar, name)
    }
    Component {
        id: sidebarComponent
        SidebarView {
            width: 240
            height: 800
        }
    }

    function test_beforeAnyScan() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const allFiles = part(sidebar, "allFilesRow")
        compare(part(sidebar, "quickAccessRows").count, 6)
        compare(part(sidebar, "quickAccessRows").itemAt(0).location.name, "Home")
        compare(allFiles.count, 0)
        verify(!findChild(allFiles, "badge").visible)
        verify(allFiles.isSelected)
        // Every category is listed, each with nothing in it yet.
        const rows = part(sidebar, "categoryRows")
        compare(rows.count, vm.categoryStats.count)
        for (let i = 0; i < rows.count; ++i)
            compare(rows.itemAt(i).count, 0, rows.itemAt(i).title)
        // The storage section is only a header until the disk report arrives (the dashboard's
        // test sees the root before its first report).
        const disk = part(sidebar, "diskLoader")
        compare([sidebar.hasDiskInfo, disk.active], [vm.disk.available, vm.disk.available])
        tryVerify(() => sidebar.hasDiskInfo, 10000)
        verify(disk.item !== null)
    }

    function test_quickAccessRowSetsThePathThenScans() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        vm.scan.path = "/typed/elsewhere"
        const home = part(sidebar, "quickAccessRows").itemAt(0)
        mouseClick(home)
        compare(vm.scan.path, AppContext.quickAccessLocations[0].path)
        compare(vm.scan.state.phase, ScanPhase.Scanning)
        verify(home.isSelected)
        verify(!part(sidebar, "quickAccessRows").itemAt(1).isSelected)
        tryVerify(() => vm.scan.state.phase !== ScanPhase.Scanning, 10000)
        compare(vm.scan.state.phase, ScanPhase.Completed)
    }

    function test_highlightFollowsTheScannedPath() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const rows = part(sidebar, "quickAccessRows")
        const locations = AppContext.quickAccessLocations
        const highlighted = () => {
            const found = []
            for (let i = 0; i < rows.count; ++i) {
                if (rows.itemAt(i).isSelected)
                    found.push(i)
            }
            return found
        }
        // Each path as typed, and the row it should light: a trailing slash still names the row.
        const cases = [
            [locations[1].path, [1]],
            [locations[2].path + "/", [2]],
            [locations[4].path + "//", [4]],
            [locations[0].path, [0]],
            ["/no/such/folder", []],
            [locations[3].path + "/inner", []],
            ["", []]
        ]
        for (const [path, expected] of cases) {
            vm.scan.path = path
            compare(highlighted(), expected, "path " + JSON.stringify(path))
        }
    }

    function test_categoryRowsFilterTheList() {
        vm.scan.path = TestFiles.sparseTree({
            "a.mp4": 300 * 1048576, "b.mov": 200 * 1048576, "c.zip": 150 * 1048576, "d.dmg": 500 * 1048576
        })
        vm.scan.start()
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed, 10000)
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const allFiles = part(sidebar, "allFilesRow")
        const rows = part(sidebar, "categoryRows")
        compare(allFiles.count, 4)
        verify(findChild(allFiles, "badge").visible)
        compare(rows.count, vm.categoryStats.count)

        // Each row shows its category's name and count, largest first.
        const expected = { "Videos": 2, "Installers": 1, "Archives": 1 }
        let videos = null
        let empty = null
        for (let i = 0; i < rows.count; ++i) {
            const row = rows.itemAt(i)
            compare(row.title, row.name)
            compare(row.count, expected[row.title] || 0, row.title)
            if (i > 0)
                verify(rows.itemAt(i - 1).count >= 1 || row.count === 0, row.title)
            if (row.title === "Videos")
                videos = row
            if (row.count === 0 && empty === null)
                empty = row
        }
        compare(videos.count, 2)
        verify(empty !== null)
        verify(!findChild(empty, "badge").visible)

        const paleBadge = String(findChild(videos, "badge").color)
        mouseClick(videos)
        compare(vm.fileList.categoryFilter, videos.category)
        tryCompare(vm.fileList, "count", 2)
        verify(videos.isSelected)
        verify(!allFiles.isSelected)
        // The selected capsule takes the stronger shade.
        verify(String(findChild(videos, "badge").color) !== paleBadge)
        // A second tap keeps the filter: "All Files" is the way back.
        mouseClick(videos)
        compare(vm.fileList.categoryFilter, videos.category)
        wait(300)
        grabImage(sidebar).save("sidebar-filtered.png")

        // Rows answer the keyboard too.
        allFiles.forceActiveFocus()
        keyClick(Qt.Key_Space)
        compare(vm.fileList.categoryFilter, -1)
        mouseClick(videos)
        compare(vm.fileList.categoryFilter, videos.category)
        mouseClick(allFiles)
        compare(vm.fileList.categoryFilter, -1)
        verify(allFiles.isSelected)
        verify(!videos.isSelected)
        tryCompare(vm.fileList, "count", 4)
    }
}
