import QtQuick
import QtQuick.Dialogs
import QtTest
import Ravelinth
import RavelinthTest

// Every menu command announces itself and does what its title says; the shortcuts the Settings
// reference lists work; Edit's Cut, Copy and Paste act on the focused text field; Export List...
// waits for rows and asks where to save, offering CSV and JSON, and what the dialog accepts is
// written.
WindowTestCase {
    id: testCase
    name: "Commands"

    function scanTree(window) {
        vm.scan.minFileSizeMB = 1
        vm.scan.path = TestFiles.sparseTree({ "movie.mkv": 30 * mib, "photo.png": 20 * mib,
                                              "notes.pdf": 10 * mib })
        keyClick(Qt.Key_Return, Qt.ControlModifier)
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed && vm.fileList.count === 3, 20000)
    }

    function test_menuCommandsAnnounceAndAct() {
        const window = openWindow()
        posted.clear()
        keyClick(Qt.Key_1, Qt.ControlModifier)
        expectPosted("showDashboard")
        compare(content(window).selectedTab, "dashboard")
        keyClick(Qt.Key_2, Qt.ControlModifier)
        expectPosted("showScanner")
        compare(content(window).selectedTab, "scanner")

        keyClick(Qt.Key_1, Qt.ControlModifier)
        posted.clear()
        scanTree(window)
        expectPosted("startScan")
        compare(content(window).selectedTab, "scanner")

        // New Scan empties the list and puts the cursor in the path field.
        findChild(window.contentItem, "fileTable").forceActiveFocus()
        keyClick(Qt.Key_N, Qt.ControlModifier)
        expectPosted("startNewScan")
        compare(vm.scan.state.phase, ScanPhase.Idle)
        tryCompare(vm.fileList, "count", 0)
        verify(scannerPart(window, "pathField").activeFocus)

        // Stop Scan stops a running scan.
        vm.scan.minFileSizeMB = 100
        vm.scan.path = "/"
        vm.scan.start()
        verify(vm.scan.isScanning)
        // What a stopped scan found may still follow the Cancelled state at once.
        const phases = []
        const record = () => phases.push(vm.scan.state.phase)
        vm.scan.stateChanged.connect(record)
        keyClick(Qt.Key_Period, Qt.ControlModifier)
        vm.scan.stateChanged.disconnect(record)
        expectPosted("stopScan")
        verify(phases.indexOf(ScanPhase.Cancelled) >= 0, JSON.stringify(phases))

        diskSpy.clear()
        keyClick(Qt.Key_R, Qt.ControlModifier)
        expectPosted("refreshDiskInfo")
        diskSpy.wait(10000)

        keyClick(Qt.Key_O, Qt.ControlModifier)
        expectPosted("browseFolder")
        const chooser = findChild(content(window), "folderChooser")
        tryVerify(() => chooser.visible, 5000)
        chooser.reject()
        tryVerify(() => !chooser.visible, 5000)
    }

    // Each Quick Scan entry scans its location.
    function test_quickScanEntriesScanTheirLocations() {
        const window = openWindow()
        const quickScan = window.menuBar.menuAt(2).menuAt(3)
        const keys = ["home", "downloads", "desktop", "applications"]
        for (let i = 0; i < keys.length; ++i) {
            const location = AppContext.quickAccessLocations.find(l => l.name.toLowerCase() === keys[i])
            verify(location, keys[i])
            posted.clear()
            quickScan.itemAt(i).action.trigger()
            expectPosted("quickScan", keys[i])
            compare(vm.scan.path, location.path)
            verify(vm.scan.state.phase === ScanPhase.Scanning
                   || vm.scan.state.phase === ScanPhase.Completed, keys[i])
            if (vm.scan.isScanning)
                vm.scan.stop()
        }
    }

    function test_theShortcutReferenceIsTrue() {
        const window = openWindow()
        scanTree(window)
        const table = findChild(window.contentItem, "fileTable")

        keyClick(Qt.Key_F, Qt.ControlModifier)
        verify(findChild(window.contentItem, "searchField").activeFocus)

        vm.selection.selectAll()
        compare(vm.selection.count, 3)
        keyClick(Qt.Key_A, Qt.ControlModifier | Qt.ShiftModifier)
        compare(vm.selection.count, 0)

        // Space looks at the focused file and closes the look again; Escape does too.
        table.forceActiveFocus()
        keyClick(Qt.Key_Down)
        const preview = findChild(window.contentItem.parent, "quickPreview")
        keyClick(Qt.Key_Space)
        tryCompare(preview, "opened", true)
        compare(findChild(preview.contentItem, "previewName").text, "movie.mkv")
        keyClick(Qt.Key_Space)
        tryCompare(preview, "visible", false)
        keyClick(Qt.Key_Down)
        keyClick(Qt.Key_Space)
        tryCompare(preview, "opened", true)
        compare(findChild(preview.contentItem, "previewName").text, "photo.png")
        keyClick(Qt.Key_Escape)
        tryCompare(preview, "visible", false)

        revealSpy.clear()
        keyClick(Qt.Key_G, Qt.ControlModifier | Qt.ShiftModifier)
        revealSpy.wait(10000)

        // Ctrl+Backspace asks before moving the selection; Cancel keeps it.
        const sheet = findChild(content(window), "trashConfirmationSheet")
        keyClick(Qt.Key_Backspace, Qt.ControlModifier)
        tryCompare(sheet, "opened", true)
        keyClick(Qt.Key_Escape)
        tryCompare(sheet, "visible", false)
        compare(vm.fileList.count, 3)
    }

    function test_editCommandsActOnTheFocusedField() {
        const window = openWindow()
        const field = findChild(window.contentItem, "searchField")
        const editMenu = window.menuBar.menuAt(1)
        function action(name) {
            for (let i = 0; i < editMenu.count; ++i) {
                const item = editMenu.itemAt(i)
                if (item.action && item.action.objectName === name)
                    return item.action
            }
            return null
        }
        mouseClick(field)
        keyClick(Qt.Key_X)
        keyClick(Qt.Key_Y)
        field.selectAll()
        editMenu.open()
        tryCompare(editMenu, "opened", true)
        verify(action("copyAction").enabled)
        action("cutAction").trigger()
        editMenu.close()
        compare(field.text, "")
        verify(field.activeFocus)
        verify(action("pasteAction").enabled)
        action("pasteAction").trigger()
        compare(field.text, "xy")

        // With the focus elsewhere there is no field to edit.
        findChild(window.contentItem, "fileTable").forceActiveFocus()
        verify(!action("pasteAction").enabled)
        verify(!action("cutAction").enabled)
    }

    // A move is announced with a way back; Undo and Ctrl+Z put the files back into the list.
    function test_aMoveCanBeUndone() {
        const window = openWindow()
        vm.preferences.confirmBeforeDelete = false
        scanTree(window)
        const notice = findChild(content(window), "undoNotice")
        verify(!notice.visible)
        vm.selection.selectAll()
        keyClick(Qt.Key_Backspace, Qt.ControlModifier)
        tryCompare(vm.fileList, "count", 0)
        tryVerify(() => notice.visible)
        compare(findChild(notice, "undoNoticeText").text, "Moved 3 files (62.9 MB) to the Trash")
        mouseClick(findChild(notice, "undoNoticeButton"))
        tryCompare(vm.fileList, "count", 3, 10000)
        verify(!notice.visible)

        vm.selection.selectAll()
        keyClick(Qt.Key_Backspace, Qt.ControlModifier)
        tryCompare(vm.fileList, "count", 0)
        findChild(window.contentItem, "fileTable").forceActiveFocus()
        posted.clear()
        keyClick(Qt.Key_Z, Qt.ControlModifier)
        expectPosted("undoMoveToTrash")
        tryCompare(vm.fileList, "count", 3, 10000)
    }

    SignalSpy {
        id: diskSpy
        target: RavelinthViewModel.disk
        signalName: "infoChanged"
    }
    SignalSpy {
        id: revealSpy
        target: AppContext.finder
        signalName: "revealCompleted"
    }
    SignalSpy {
        id: exportedSpy
        target: RavelinthViewModel.operations
        signalName: "exported"
    }

    function test_exportListOpensTheSaveDialog() {
        const window = openWindow()
        const fileMenu = window.menuBar.menuAt(0)
        const item = Array.from({ length: fileMenu.count }, (_, i) => fileMenu.itemAt(i)).find(
                  item => item && item.text === "Export List...")
        verify(!item.enabled)

        scanPath(TestFiles.sparseTree({ "movie.mkv": 30 * mib, "notes.pdf": 10 * mib }), 2)
        verify(item.enabled)

        posted.clear()
        item.action.trigger()
        expectPosted("exportList")
        const dialog = findChild(window, "exportDialog")
        verify(dialog)
        tryVerify(() => dialog.visible, 5000)
        compare(dialog.fileMode, FileDialog.SaveFile)
        compare(dialog.nameFilters, ["CSV (*.csv)", "JSON (*.json)"])
        dialog.reject()
        tryVerify(() => !dialog.visible, 5000)

        exportedSpy.clear()
        const folder = vm.scan.path
        dialog.currentFolder = "file://" + folder
        dialog.selectedFile = "file://" + folder + "/list.csv"
        item.action.trigger()
        tryVerify(() => dialog.visible, 5000)
        dialog.accept()
        exportedSpy.wait(5000)
        compare(exportedSpy.signalArguments[0][0], folder + "/list.csv")
        compare(exportedSpy.signalArguments[0][1], 2)
    }
}
