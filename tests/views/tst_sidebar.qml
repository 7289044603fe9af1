import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

ViewTestCase {
    id: testCase
    name: "Sidebar"
    visible: true
    width: 260
    height: 820

    Component {
        id: sidebarComponent
        SidebarView {
            width: 240
            height: 800
        }
    }

    function test_beforeAnyScan() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const allFiles = findChild(sidebar, "allFilesRow")
        compare(allFiles.count, 0)
        verify(!findChild(allFiles, "badge").visible)
        verify(allFiles.isSelected)
        // Every category is listed, each with nothing in it yet.
        const rows = findChild(sidebar, "categoryRows")
        verify(rows.count > 0)
        for (let i = 0; i < rows.count; ++i)
            compare(rows.itemAt(i).count, 0, rows.itemAt(i).title)
        // The storage section is only a header until the disk report arrives (the dashboard's
        // test sees the root before its first report).
        const disk = findChild(sidebar, "diskLoader")
        compare([sidebar.hasDiskInfo, disk.active], [vm.disk.available, vm.disk.available])
        tryVerify(() => sidebar.hasDiskInfo, 10000)
        verify(disk.item !== null)
    }

    function test_quickAccessRowSetsThePathThenScans() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        vm.scan.path = "/typed/elsewhere"
        const home = findChild(sidebar, "quickAccessRows").itemAt(0)
        mouseClick(home)
        compare(vm.scan.path, AppContext.quickAccessLocations[0].path)
        compare(vm.scan.state.phase, ScanPhase.Scanning)
        verify(home.isSelected)
        verify(!findChild(sidebar, "quickAccessRows").itemAt(1).isSelected)
        tryVerify(() => vm.scan.state.phase !== ScanPhase.Scanning, 10000)
        compare(vm.scan.state.phase, ScanPhase.Completed)
    }

    function test_highlightFollowsTheScannedPath() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const rows = findChild(sidebar, "quickAccessRows")
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
        scanPath(TestFiles.sparseTree({ "a.mp4": 300 * mib, "b.mov": 200 * mib, "c.zip": 150 * mib,
                                        "d.dmg": 500 * mib }), 4)
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const allFiles = findChild(sidebar, "allFilesRow")
        const rows = findChild(sidebar, "categoryRows")
        compare(allFiles.count, 4)
        verify(findChild(allFiles, "badge").visible)

        // Each row shows its category's name and count, largest first.
        const expected = { "Videos": 2, "Installers": 1, "Archives": 1 }
        let videos = null
        let empty = null
        for (let i = 0; i < rows.count; ++i) {
            const row = rows.itemAt(i)
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
