import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// The file list as a user meets it: its empty states, sorting by header, selection by mouse and
// keys, the context menu and the double-click, on real scans of real (sparse) files.
ViewTestCase {
    id: testCase
    name: "FileList"
    visible: true
    width: 1000
    height: 620

    readonly property real day: 24 * 3600

    // Seven files, one per category that the extensions reach, of distinct sizes and ages.
    readonly property var fileSet: [
        { path: "Movies/holiday.mov", size: 3000 * mb, age: 2 * day },
        { path: "Archives/backup.zip", size: 1200 * mb, age: 3 * 3600 },
        { path: "Downloads/setup.dmg", size: 800 * mb, age: 40 * day },
        { path: "Other/data.bin", size: 500 * mb, age: 10 * day },
        { path: "Pictures/panorama.tiff", size: 200 * mb, age: 5 * 60 },
        { path: "Music/album.flac", size: 150 * mb, age: 90 * day },
        { path: "Docs/report.pdf", size: 120 * mb, age: 400 * day }
    ]

    Component {
        id: listComponent
        FileListView {
            width: testCase.width
            height: testCase.height
        }
    }
    function init() {
        TestDesktop.clear()
    }

    // A list over a scan of the file set, its rows drawn.
    function scannedList() {
        const view = createTemporaryObject(listComponent, testCase)
        const folder = makeFolder(fileSet)
        scanPath(folder.root, fileSet.length)
        tryVerify(() => table(view).itemAtCell(1, 0) !== null)
        return { view: view, folder: folder }
    }

    // The parts of the view, by name.
    function table(view) {
        return findChild(view, "fileTable")
    }
    function tableView(view) {
        return findChild(view, "fileTableView")
    }
    function emptyState(view) {
        return findChild(view, "emptyState")
    }

    function cell(view, row, column) {
        table(view).positionViewAtRow(row, TableView.Contain)
        table(view).forceLayout()
        const item = table(view).itemAtCell(column === undefined ? 1 : column, row)
        verify(item !== null, "no cell at row " + row)
        return item
    }

    function headerCell(view, column) {
        const item = findChild(view, "fileListHeader").itemAtCell(column, 0)
        verify(item !== null, "no header cell " + column)
        return item
    }

    function names() {
        const out = []
        for (let row = 0; row < vm.fileList.count; ++row)
            out.push(vm.operations.pathsOf([vm.fileList.fileIdAt(row)])[0].split("/").pop())
        return out
    }

    function selectedRows() {
        const rows = []
        for (let row = 0; row < vm.fileList.count; ++row) {
            if (vm.selection.isSelected(row))
                rows.push(row)
        }
        return rows
    }

    // A row that has just gone still has its bindings read once, with undefined roles.
    function test_valuesOfAVanishedRowSayNothing() {
        for (const value of [undefined, NaN, Infinity, -Infinity, 1e300, -1e300]) {
            compare(TextFormat.relativeDate(value), "", String(value))
            compare(TextFormat.byteCount(value, false), TextFormat.byteCount(0, false), String(value))
        }
    }

    function test_emptyStates() {
        const view = createTemporaryObject(listComponent, testCase)
        const says = () => [emptyState(view).visible, emptyState(view).title, emptyState(view).message]
        compare(says(), [true, "No Files Scanned",
                         "Select a folder and click 'Start Scan' to find large files"])

        const folder = makeFolder(fileSet)
        vm.scan.path = folder.root
        vm.scan.minFileSizeMB = 1
        vm.scan.start()
        compare(says(), [true, "Scanning...", vm.scan.state.statusMessage])
        const spinner = findChild(emptyState(view), "scanningIndicator")
        verify(spinner.visible && spinner.spinning)

        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed, 10000)
        tryCompare(vm.fileList, "count", fileSet.length, 5000)
        verify(!emptyState(view).visible)

        // Everything filtered away, then the button brings it all back.
        // The category of the largest file, a film, from its badge.
        const videos = findChild(cell(view, 0, 3), "categoryBadge").category
        vm.fileList.categoryFilter = videos
        vm.fileList.searchText = "no such file"
        tryCompare(emptyState(view), "visible", true)
        compare(says(), [true, "No Matching Files", "Try adjusting your filters or search query"])
        const clear = findChild(emptyState(view), "emptyClearFilters")
        verify(clear.visible)
        mouseClick(clear)
        compare([vm.fileList.searchText, vm.fileList.categoryFilter], ["", -1])
        tryCompare(vm.fileList, "count", fileSet.length)
        verify(!emptyState(view).visible)

        // The toolbar's count, its search box and its own "Clear Filters".
        const count = findChild(view, "countText")
        compare(count.text, "7 files • " + TextFormat.byteCount(vm.fileList.totalScannedSize, false))
        const search = findChild(view, "searchField")
        testCase.Window.window.requestActivate()
        mouseClick(search)
        for (const key of "mov")
            keyClick(key)
        compare(vm.fileList.searchText, "mov")
        tryCompare(vm.fileList, "count", 1)
        compare(count.text, "1 files • " + TextFormat.byteCount(vm.fileList.totalScannedSize, false))
        const clearSearch = findChild(view, "clearSearch")
        verify(clearSearch.visible)
        mouseClick(clearSearch)
        compare([vm.fileList.searchText, search.text, clearSearch.visible], ["", "", false])
        tryCompare(vm.fileList, "count", fileSet.length)
        const installers = findChild(cell(view, 2, 3), "categoryBadge").category
        vm.fileList.categoryFilter = installers
        tryCompare(vm.fileList, "count", 1)
        mouseClick(findChild(view, "toolbarClearFilters"))
        compare(vm.fileList.categoryFilter, -1)
        tryCompare(vm.fileList, "count", fileSet.length)
    }

    function test_headerClicksChooseTheSortOption() {
        const view = scannedList().view
        compare(vm.fileList.sortOption, 0 /* Size (Largest) */)
        compare(names()[0], "holiday.mov")

        // [column clicked, sort option, first name]: Size flips to smallest first; Category,
        // Status and the icon column sort nothing; Name goes A to Z then Z to A; Modified oldest
        // first, then newest.
        for (const [column, option, first] of [[2, 1, "report.pdf"], [3, 1, "report.pdf"],
                                               [5, 1, "report.pdf"], [0, 1, "report.pdf"],
                                               [1, 2, "album.flac"], [1, 3, "setup.dmg"],
                                               [4, 5, "report.pdf"], [4, 4, "panorama.tiff"]]) {
            mouseClick(headerCell(view, column))
            compare(vm.fileList.sortOption, option, "column " + column)
            tryVerify(() => names()[0] === first, 5000, "column " + column)
        }
        // Only the sorted column is marked, with its direction.
        compare([0, 1, 2, 3, 4, 5].map(column => headerCell(view, column).sorted),
                [false, false, false, false, true, false])
        verify(!vm.fileList.sortAscending)

        // The picker chooses, then a header click wins again: another column starts upward.
        const picker = findChild(view, "sortPicker")
        picker.currentIndex = 2
        picker.activated(2)
        compare([vm.fileList.sortOption, vm.fileList.sortColumn], [2, 1])
        mouseClick(headerCell(view, 2))
        compare([vm.fileList.sortOption, vm.fileList.sortColumn, vm.fileList.sortAscending],
                [1 /* Size (Smallest) */, 2, true])
    }

    function test_modifiedColumnSaysHowLongAgo() {
        const view = scannedList().view
        // Largest first: holiday.mov (2 days), backup.zip (3 hours), setup.dmg (40 days).
        compare([0, 1, 2].map(row => findChild(cell(view, row, 4), "modifiedText").text),
                ["2 days ago", "3 hours ago", "1 month ago"])
        const badge = findChild(cell(view, 3, 3), "categoryBadge")
        compare(badge.categoryName, "Other")
        verify(badge.category >= 0)
        // An installer is safe to delete, a film is not.
        compare([2, 0].map(row => findChild(cell(view, row, 5), "safeBadge").isSafe), [true, false])
    }

    function test_selectionByMouse() {
        const view = scannedList().view

        const ctrl = Qt.ControlModifier, shift = Qt.ShiftModifier
        // [row, column, modifiers, selected rows after the click]; any column selects the row.
        for (const [row, column, modifiers, selected] of [[0, 1, 0, [0]], [2, 1, ctrl, [0, 2]],
                                                           [4, 1, shift, [2, 3, 4]],
                                                           [6, 1, ctrl | shift, [2, 3, 4, 5, 6]],
                                                           [3, 1, ctrl, [2, 4, 5, 6]],
                                                           [1, 5, 0, [1]]]) {
            mouseClick(cell(view, row, column), 10, 10, Qt.LeftButton, modifiers)
            compare(selectedRows(), selected, "click on row " + row)
        }
        compare(vm.selection.count, 1)

        // A double click selects and reveals, and never opens the file: with no file manager
        // answering, the file's folder is what gets opened.
        mouseDoubleClickSequence(cell(view, 2))
        tryCompare(TestDesktop.opened, "length", 1)
        verify(TestDesktop.opened[0].endsWith("/Downloads"), TestDesktop.opened[0])
        compare(selectedRows(), [2])
    }

    function test_selectionByKeys() {
        const view = scannedList().view
        testCase.Window.window.requestActivate()
        mouseClick(cell(view, 1))
        verify(table(view).activeFocus)

        const shift = Qt.ShiftModifier
        // [key, modifiers, selected rows after it]; Up on the first row stays there.
        for (const [key, modifiers, selected] of [[Qt.Key_Down, 0, [2]], [Qt.Key_Down, shift, [2, 3]],
                                                   [Qt.Key_Down, shift, [2, 3, 4]],
                                                   [Qt.Key_Up, shift, [2, 3]], [Qt.Key_Up, 0, [2]],
                                                   [Qt.Key_End, 0, [6]],
                                                   [Qt.Key_Home, shift, [0, 1, 2, 3, 4, 5, 6]],
                                                   [Qt.Key_Home, 0, [0]], [Qt.Key_Up, 0, [0]]]) {
            keyClick(key, modifiers)
            compare(selectedRows(), selected)
        }

        // Enter shows the selection in the file manager (here: its folder is opened).
        keyClick(Qt.Key_Return)
        tryCompare(TestDesktop.opened, "length", 1)
        verify(TestDesktop.opened[0].endsWith("/Movies"), TestDesktop.opened[0])
    }

    function test_deleteKeyMovesTheSelectionToTheTrash() {
        // The question before the move belongs to the window (tst_trash.qml).
        vm.preferences.confirmBeforeDelete = false
        const { view, folder } = scannedList()
        testCase.Window.window.requestActivate()
        mouseClick(cell(view, 0))
        keyClick(Qt.Key_Down, Qt.ShiftModifier)
        compare(vm.selection.count, 2)
        keyClick(Qt.Key_Delete)
        tryCompare(vm.fileList, "fileCount", 5, 10000)
        compare(vm.selection.count, 0)
        compare(["Movies/holiday.mov", "Archives/backup.zip", "Downloads/setup.dmg"].map(
                    path => folder.exists(path)), [false, false, true])

        // Ctrl+Backspace does the same.
        tryCompare(vm.fileList, "count", 5)
        mouseClick(cell(view, 0))
        keyClick(Qt.Key_Backspace, Qt.ControlModifier)
        tryCompare(vm.fileList, "fileCount", 4, 10000)
        verify(!folder.exists("Downloads/setup.dmg"))
    }

    function test_contextMenuActsOnTheClickedSet() {
        vm.preferences.confirmBeforeDelete = false
        const { view, folder } = scannedList()
        const menu = findChild(view, "fileContextMenu")

        // Outside the selection: the clicked row alone, the selection untouched.
        mouseClick(cell(view, 0))
        mouseClick(cell(view, 1), 10, 10, Qt.LeftButton, Qt.ControlModifier)
        mouseClick(cell(view, 3), 10, 10, Qt.RightButton)
        tryCompare(menu, "opened", true)
        compare([menu.selection, menu.file, tableView(view).contextRow], [[vm.fileList.fileIdAt(3)], vm.fileList.fileIdAt(3), 3])
        compare(selectedRows(), [0, 1])
        compare(menu.itemAt(0).text, "Show in File Manager") // this system's words
        compare([1, 5].map(i => menu.itemAt(i).text), ["Open", "Move to Trash"])

        // "Open" opens the file itself.
        mouseClick(menu.itemAt(1))
        tryCompare(menu, "opened", false)
        compare(TestDesktop.opened.length, 1)
        verify(TestDesktop.opened[0].endsWith("/Other/data.bin"), TestDesktop.opened[0])
        compare(tableView(view).contextRow, -1)

        // Inside a selection of three: all three go to the Trash.
        mouseClick(cell(view, 4), 10, 10, Qt.LeftButton, Qt.ControlModifier)
        compare(selectedRows(), [0, 1, 4])
        mouseClick(cell(view, 1), 10, 10, Qt.RightButton)
        tryCompare(menu, "opened", true)
        compare([menu.selection.length, menu.selectedFiles.length], [3, 3])
        mouseClick(menu.itemAt(5))
        tryCompare(vm.fileList, "fileCount", 4, 10000)
        compare(["Movies/holiday.mov", "Archives/backup.zip", "Pictures/panorama.tiff",
                 "Other/data.bin"].map(path => folder.exists(path)), [false, false, false, true])
        compare(vm.selection.count, 0)
    }

    function test_columnsResizeByTheirGrips() {
        const view = scannedList().view
        const widths = () => [0, 1, 2, 3, 4, 5].map(c => tableView(view).widthOf(c))
        // Header and cells keep the same width, column by column.
        const expectFollowed = what => {
            for (let c = 0; c < 6; ++c) {
                tryCompare(headerCell(view, c), "width", tableView(view).widthOf(c), 2000, what)
                compare(cell(view, 0, c).width, tableView(view).widthOf(c), what + " cell " + c)
            }
        }
        const drag = (column, dx) => {
            const grip = findChild(headerCell(view, column), "grip" + column)
            verify(grip.visible, "grip " + column)
            // From the list's own corner: the grip itself moves along with the border it drags.
            const at = grip.mapToItem(view, grip.width / 2, grip.height / 2)
            mouseDrag(view, at.x, at.y, dx, 0)
        }
        compare(widths(), [32, 1000 - 32 - 100 - 120 - 115 - 150, 100, 120, 115, 150])
        verify(!findChild(headerCell(view, 0), "grip0").visible) // the icon column is fixed

        // Each of the right-hand columns: wider by a drag, then no narrower than its floor; the
        // name takes up what they give or leave.
        const cases = [
            { column: 2, ideal: 100, minimum: 80 },
            { column: 3, ideal: 120, minimum: 100 },
            { column: 4, ideal: 115, minimum: 80 },
            { column: 5, ideal: 150, minimum: 80 }
        ]
        for (const c of cases) {
            drag(c.column, 40)
            compare(widths()[c.column], c.ideal + 40, "column " + c.column + " wider")
            compare(widths().reduce((a, b) => a + b), 1000, "column " + c.column + " the row stays full")
            expectFollowed("column " + c.column + " wider")
            drag(c.column, -300)
            compare(widths()[c.column], c.minimum, "column " + c.column + " at its floor")
            compare(widths().reduce((a, b) => a + b), 1000)
        }
        expectFollowed("every column at its floor")
        const nameAtFloors = 1000 - 32 - 80 - 100 - 80 - 80
        compare(widths()[1], nameAtFloors)

        // The name's grip is the border with "Size": narrower gives "Size" the room...
        drag(1, -100)
        compare(widths(), [32, nameAtFloors - 100, 180, 100, 80, 80])
        expectFollowed("name narrower")
        // ...and wider takes it back down to the floor of "Size", then the row overflows.
        drag(1, 300)
        compare(widths(), [32, nameAtFloors + 200, 80, 100, 80, 80])
        // Never under its own floor.
        drag(1, -2000)
        compare(widths()[1], 200)
        tableView(view).resizeColumn(0, 90)
        compare(widths()[0], 32)
    }
}
