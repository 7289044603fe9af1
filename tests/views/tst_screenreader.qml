import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// What a screen reader user depends on, checked in the window itself: the table's rows carry
// their reading and take the focus on every key move, the Menu key and Shift+F10 open the row's
// menu, Enter in the path field scans, F6 goes round the regions and the scan's end is announced. Tab
// goes round them in reading order (tst_focusrings.qml).
// The error alert and the tutorial take the keyboard and give it back (tst_window.qml).
WindowTestCase {
    id: testCase
    name: "ScreenReader"

    function scanSmallTree(window) {
        vm.scan.minFileSizeMB = 1
        const field = scannerPart(window, "pathField")
        field.forceActiveFocus()
        field.selectAll()
        keyClick(Qt.Key_Delete)
        const path = TestFiles.sparseTree({ "report.pdf": 300 * mib, "clip.mov": 200 * mib })
        for (const ch of path)
            keyClick(ch)
        compare(vm.scan.path, path)
        keyClick(Qt.Key_Return)
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed, 10000)
        const table = findChild(window.contentItem, "fileTable")
        tryVerify(() => table.itemAtCell(1, 1) !== null)
        return table
    }

    function test_enterInThePathFieldScansAndTheEndIsAnnounced() {
        const window = openWindow()
        const status = findChild(window.contentItem, "scanStatus")
        compare(status.Accessible.role, Accessible.StatusBar)
        scanSmallTree(window)
        compare(vm.fileList.count, 2)
        tryVerify(() => status.Accessible.name.startsWith("Scan complete: 2 files • "),
                  1000, status.Accessible.name)
        // A filter's new count is heard the same way.
        vm.fileList.searchText = "report"
        tryVerify(() => status.Accessible.name.startsWith("Showing 1 of 2 files • "),
                  1000, status.Accessible.name)
        vm.fileList.searchText = ""
        tryVerify(() => status.Accessible.name.startsWith("Scan complete: 2 files • "),
                  1000, status.Accessible.name)
        const count = findChild(window.contentItem, "countText")
        compare(count.Accessible.role, Accessible.StaticText)
        verify(count.Accessible.name.startsWith("2 files • "), count.Accessible.name)
    }

    function test_rowsReadWholeAndTakeTheFocusOnKeys() {
        const window = openWindow()
        const table = scanSmallTree(window)
        compare(table.Accessible.role, Accessible.Table)
        const first = table.itemAtCell(1, 0)
        compare(first.Accessible.role, Accessible.Row)
        // Name, size, category, modified, status: what the row's cells read, in their order.
        const cells = [2, 3, 4, 5].map(column => table.itemAtCell(column, 0).Accessible.name)
        const read = first.Accessible.name.split(", ")
        compare(read.length, 5, first.Accessible.name)
        compare([read[0], read[1], read[2], read[4]], ["report.pdf", cells[0], cells[1], cells[3]])
        // The file was made a moment ago, so the row and its date cell may be read either side of
        // a second's turn ("in 0 seconds", "1 second ago"): both must be relative dates.
        verify(/ ago$|^in /.test(read[3]) && / ago$|^in /.test(cells[2]), read[3] + " / " + cells[2])
        verify(first.Accessible.name.endsWith(", Review") || first.Accessible.name.endsWith(", Safe"),
               first.Accessible.name)
        compare(table.itemAtCell(2, 0).Accessible.role, Accessible.Cell)

        mouseClick(first)
        keyClick(Qt.Key_Down)
        compare(window.activeFocusItem, table.itemAtCell(1, 1))
        verify(table.itemAtCell(1, 1).Accessible.selected)
        verify(!first.Accessible.selected)
        // Selected rows keep their selected look while the row, not the table, has the focus.
        compare(table.itemAtCell(2, 1).color, Theme.accent)
        keyClick(Qt.Key_Up)
        compare(window.activeFocusItem, first)
        compare(vm.selection.count, 1)

        const header = findChild(window.contentItem, "header2")
        compare(header.Accessible.role, Accessible.Button)
        compare(header.Accessible.name.split(",")[0], "Size")
    }

    function test_menuKeyAndShiftF10OpenTheRowMenu() {
        const window = openWindow()
        const table = scanSmallTree(window)
        const menu = findChild(table.parent, "fileContextMenu")
        mouseClick(table.itemAtCell(1, 0))
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Menu)
        tryVerify(() => menu.opened)
        compare(menu.file, vm.fileList.fileIdAt(1))
        // Opened on the focused row, not where the pointer last was.
        const row = table.itemAtCell(1, 1).mapToItem(null, 0, 0)
        const at = menu.contentItem.mapToItem(null, 0, 0)
        verify(Math.abs(at.y - row.y) < 60, at.y + " vs " + row.y)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !menu.visible)
        keyClick(Qt.Key_F10, Qt.ShiftModifier)
        tryVerify(() => menu.opened)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !menu.visible)
    }

    function test_f6GoesRoundTheRegions() {
        const window = openWindow()
        scannerPart(window, "pathField").forceActiveFocus()
        const regions = [0, 0, 0, 0, Qt.ShiftModifier].map(modifiers => {
            keyClick(Qt.Key_F6, modifiers)
            return regionOf(window.activeFocusItem)
        })
        compare(regions, ["toolbar", "sidebar", "tabs", "scannerView", "tabs"])
    }

    function test_controlsAreNamedAndStatesTrue() {
        const window = openWindow()
        compare(findChild(window.contentItem, "searchField").Accessible.name, "Search files")
        verify(part(window, "toolbarSidebarButton").Accessible.checked)
        verify(part(window, "allFilesRow").Accessible.checked)
        compare(scannerPart(window, "quickScan_Home").Accessible.name, "Scan Home")
    }

    function test_settingsOpensOnItsTabAndTheArrowsSwitchTabs() {
        const window = openSettings()
        const settings = settingsView(window)
        const general = findChild(settings, "generalTab")
        const exclusions = findChild(settings, "exclusionsTab")
        tryVerify(() => general.activeFocus)
        verify(general.Accessible.selected && !exclusions.Accessible.selected)
        keyClick(Qt.Key_Right)
        compare(settings.currentTab, 1)
        verify(exclusions.activeFocus)
        verify(exclusions.Accessible.selected && !general.Accessible.selected)
        keyClick(Qt.Key_Left)
        compare(settings.currentTab, 0)
        verify(general.activeFocus)
        compare(findChild(settings, "sizePicker").Accessible.name, "Default minimum file size")
    }
}
