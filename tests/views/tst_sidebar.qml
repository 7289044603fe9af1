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

    Component {
        id: viewModelComponent
        RavelinthViewModel {}
    }
    Component {
        id: sidebarComponent
        SidebarView {
            width: 240
            height: 800
        }
    }

    function test_beforeAnyScan() {
        const vm = createTemporaryObject(viewModelComponent, testCase)
        const sidebar = createTemporaryObject(sidebarComponent, testCase, { viewModel: vm })
        compare(sidebar.quickAccessRows.count, 6)
        compare(sidebar.quickAccessRows.itemAt(0).location.name, "Home")
        compare(sidebar.allFilesRow.count, 0)
        verify(!sidebar.allFilesRow.badge.visible)
        verify(sidebar.allFilesRow.isSelected)
        compare(sidebar.categoryRows.count, 0)
        // The storage section is only a header until the disk report arrives.
        verify(!sidebar.hasDiskInfo)
        tryVerify(() => sidebar.hasDiskInfo, 10000)
    }

    function test_quickAccessRowSetsThePathThenScans() {
        const vm = createTemporaryObject(viewModelComponent, testCase)
        const sidebar = createTemporaryObject(sidebarComponent, testCase, { viewModel: vm })
        vm.scanPath = "/typed/elsewhere"
        const home = sidebar.quickAccessRows.itemAt(0)
        mouseClick(home)
        compare(vm.scanPath, AppContext.quickAccessLocations[0].path)
        compare(vm.scanState.kind, "scanning")
        verify(home.isSelected)
        verify(!sidebar.quickAccessRows.itemAt(1).isSelected)
        tryVerify(() => vm.scanState.kind !== "scanning", 10000)
        compare(vm.scanState.kind, "completed")
    }

    function test_categoryRowsFilterTheList() {
        const vm = createTemporaryObject(viewModelComponent, testCase)
        vm.scanPath = TestFiles.sparseTree({
            "a.mp4": 300 * 1048576, "b.mov": 200 * 1048576, "c.zip": 150 * 1048576, "d.dmg": 500 * 1048576
        })
        vm.startScan()
        tryVerify(() => vm.scanState.kind === "completed", 10000)
        const sidebar = createTemporaryObject(sidebarComponent, testCase, { viewModel: vm })
        compare(sidebar.allFilesRow.count, 4)
        verify(sidebar.allFilesRow.badge.visible)
        compare(sidebar.categoryRows.count, vm.categoryStats.length)

        let videos = null
        let empty = null
        for (let i = 0; i < sidebar.categoryRows.count; ++i) {
            const row = sidebar.categoryRows.itemAt(i)
            compare(row.title, vm.categoryStats[i].category)
            compare(row.count, vm.categoryStats[i].fileCount)
            if (row.title === "Videos")
                videos = row
            if (row.count === 0 && empty === null)
                empty = row
        }
        compare(videos.count, 2)
        verify(empty !== null)
        verify(!empty.badge.visible)

        mouseClick(videos)
        compare(vm.categoryFilter, "Videos")
        tryCompare(vm, "displayedCount", 2)
        verify(videos.isSelected)
        verify(!sidebar.allFilesRow.isSelected)
        compare(videos.badge.color, Theme.withOpacity(videos.tint, 1.0))
        // A second tap keeps the filter: "All Files" is the way back.
        mouseClick(videos)
        compare(vm.categoryFilter, "Videos")
        wait(300)
        grabImage(sidebar).save("sidebar-filtered.png")

        // Rows answer the keyboard too.
        sidebar.allFilesRow.forceActiveFocus()
        keyClick(Qt.Key_Space)
        compare(vm.categoryFilter, "")
        mouseClick(videos)
        compare(vm.categoryFilter, "Videos")
        mouseClick(sidebar.allFilesRow)
        compare(vm.categoryFilter, "")
        verify(sidebar.allFilesRow.isSelected)
        verify(!videos.isSelected)
        tryCompare(vm, "displayedCount", 4)
    }
}
