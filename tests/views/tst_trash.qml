import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// Moving files to the Trash from the window: with confirmation on, a sheet asks first and only
// its "Move to Trash" moves (Escape and Return leave everything); with it off the move is at
// once; files a move leaves behind are told in a notice that lists them with the reason.
WindowTestCase {
    id: testCase
    name: "Trash"

    // Seven files, largest first as the list shows them, 2.8 GB together.
    readonly property var fileSet: [
        { path: "Movies/holiday.mov", size: 1000 * mb },
        { path: "Images/disk.iso", size: 800 * mb },
        { path: "Archives/backup.zip", size: 400 * mb },
        { path: "Music/album.flac", size: 300 * mb },
        { path: "Pictures/panorama.tiff", size: 200 * mb },
        { path: "Downloads/setup.dmg", size: 60 * mb },
        { path: "Docs/report.pdf", size: 40 * mb }
    ]

    function scanFolder(files) {
        const folder = makeFolder(files)
        scanPath(folder.root, files.length)
        return folder
    }
    function allExist(folder, files) {
        return files.every(f => folder.exists(f.path))
    }
    function shownNames(sheet) {
        const names = []
        const rows = findChild(sheet, "trashConfirmationNames").children
        for (let i = 0; i < rows.length; ++i) {
            if (rows[i].modelData !== undefined)
                names.push(rows[i].modelData)
        }
        return names
    }

    function test_sheetAsksBeforeTheToolbarMoves() {
        vm.preferences.confirmBeforeDelete = true
        const window = openWindow()
        const folder = scanFolder(fileSet)
        const sheet = part(window, "trashConfirmationSheet")
        const trash = part(window, "toolbarTrashButton")
        verify(!sheet.visible)
        vm.selection.selectAll()

        // What it asks about, with the focus on Cancel.
        mouseClick(trash)
        tryCompare(sheet, "opened", true)
        verify(sheet.modal)
        compare(findChild(sheet, "trashConfirmationTitle").text, "Move 7 files to the Trash?")
        compare(sheet.title, "Move 7 files to the Trash?") // its name for screen readers
        verify(findChild(sheet, "trashConfirmationSize").text.startsWith("2.8 GB in total."))
        verify(!findChild(sheet, "trashConfirmationLinked").visible) // no file has other names
        compare(shownNames(sheet), ["holiday.mov", "disk.iso", "backup.zip", "album.flac",
                                    "panorama.tiff"])
        const more = findChild(sheet, "trashConfirmationMore")
        verify(more.visible)
        compare(more.text, "and 2 more")
        tryVerify(() => findChild(sheet, "trashConfirmationCancel").activeFocus)

        // Escape cancels: every file stays, listed and selected.
        keyClick(Qt.Key_Escape)
        tryCompare(sheet, "visible", false)
        wait(200)
        verify(allExist(folder, fileSet))
        compare([vm.fileList.fileCount, vm.selection.count], [7, 7])
        verify(!vm.operations.hasPendingMove)

        // Return does not move, not even with the focus on "Move to Trash".
        mouseClick(trash)
        tryCompare(sheet, "opened", true)
        keyClick(Qt.Key_Return)
        tryCompare(sheet, "visible", false)
        mouseClick(trash)
        tryCompare(sheet, "opened", true)
        keyClick(Qt.Key_Tab)
        tryVerify(() => findChild(sheet, "trashConfirmationMove").activeFocus)
        keyClick(Qt.Key_Return)
        tryCompare(sheet, "visible", false)
        wait(200)
        verify(allExist(folder, fileSet))
        compare(vm.fileList.fileCount, 7)

        // The button moves them.
        mouseClick(trash)
        tryCompare(sheet, "opened", true)
        mouseClick(findChild(sheet, "trashConfirmationMove"))
        tryCompare(sheet, "visible", false)
        tryCompare(vm.fileList, "fileCount", 0, 10000)
        verify(fileSet.every(f => !folder.exists(f.path)))
        verify(!part(window, "trashResultNotice").visible)
    }

    function test_keysAndContextMenuAskToo() {
        vm.preferences.confirmBeforeDelete = true
        const window = openWindow()
        const folder = scanFolder(fileSet.slice(0, 2))
        const sheet = part(window, "trashConfirmationSheet")

        // The table's Delete key, on the row clicked.
        const table = part(window, "fileTable")
        tryVerify(() => table.itemAtCell(1, 1) !== null)
        mouseClick(table.itemAtCell(1, 1))
        compare(vm.selection.count, 1)
        keyClick(Qt.Key_Delete)
        tryCompare(sheet, "opened", true)
        compare(findChild(sheet, "trashConfirmationTitle").text, "Move 1 file to the Trash?")
        compare(shownNames(sheet), ["disk.iso"])
        verify(!findChild(sheet, "trashConfirmationMore").visible)
        keyClick(Qt.Key_Escape)
        tryCompare(sheet, "visible", false)

        // The context menu's entry, for the row it was opened on.
        const menu = part(window, "fileContextMenu")
        menu.file = vm.fileList.fileIdAt(0)
        menu.selection = [menu.file]
        menu.moveToTrash()
        tryCompare(sheet, "opened", true)
        compare(shownNames(sheet), ["holiday.mov"])
        mouseClick(findChild(sheet, "trashConfirmationMove"))
        tryCompare(vm.fileList, "fileCount", 1, 10000)
        verify(!folder.exists("Movies/holiday.mov"))
        verify(folder.exists("Images/disk.iso"))
        // Only what moved left the selection.
        compare(vm.selection.count, 1)
    }

    // Without confirmation the toolbar moves at once; what stays behind is told.
    function test_failureNoticeShowsCountsAndDetails() {
        vm.preferences.confirmBeforeDelete = false
        const window = openWindow()
        const folder = scanFolder([{ path: "Sealed/locked.iso", size: 900 * mb },
                                   { path: "Movies/holiday.mov", size: 600 * mb },
                                   { path: "Archives/backup.zip", size: 300 * mb }])
        verify(folder.lock("Sealed/locked.iso"), "chattr +i failed: the test needs root")
        const notice = part(window, "trashResultNotice")
        const summary = findChild(notice, "trashResultSummary")
        const details = findChild(notice, "trashResultDetails")
        const detailsButton = findChild(notice, "trashResultDetailsButton")
        verify(!notice.visible)

        // Two moved, one stayed: the notice says so, with the list folded.
        vm.selection.selectAll()
        mouseClick(part(window, "toolbarTrashButton"))
        tryCompare(vm.fileList, "fileCount", 1, 10000)
        tryCompare(notice, "visible", true)
        verify(!part(window, "trashConfirmationSheet").visible)
        compare(summary.text, "Moved 2 files to the Trash. 1 could not be moved.")
        compare(notice.Accessible.name, summary.text)
        verify(!details.visible)
        compare(detailsButton.text, "Show Details")
        compare(["Sealed/locked.iso", "Movies/holiday.mov", "Archives/backup.zip"].map(
                    path => folder.exists(path)), [true, false, false])

        // Its details: the file's name and the reason.
        mouseClick(detailsButton)
        verify(details.visible)
        compare(detailsButton.text, "Hide Details")
        compare(details.count, 1)
        tryVerify(() => details.itemAtIndex(0) !== null)
        const row = details.itemAtIndex(0)
        compare(row.children[0].text, "locked.iso")
        verify(/not permitted/i.test(row.children[1].text), row.children[1].text)

        // The next result replaces it, folded again; nothing moved this time.
        vm.selection.selectAll()
        mouseClick(part(window, "toolbarTrashButton"))
        tryCompare(summary, "text", "1 file could not be moved to the Trash.")
        verify(!details.visible)

        // Escape dismisses it once it has the focus.
        notice.forceActiveFocus()
        keyClick(Qt.Key_Escape)
        tryCompare(notice, "visible", false)

        // And so does its close button.
        vm.selection.selectAll()
        mouseClick(part(window, "toolbarTrashButton"))
        tryCompare(notice, "visible", true)
        mouseClick(findChild(notice, "trashResultClose"))
        tryCompare(notice, "visible", false)
        compare(vm.fileList.fileCount, 1)
    }
}
