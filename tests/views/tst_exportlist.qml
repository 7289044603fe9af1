import QtQuick
import QtTest
import QtQuick.Dialogs
import Ravelinth
import RavelinthTest

// File > Export List... waits for rows, announces itself and asks where to save, offering CSV
// and JSON; what the dialog accepts is written.
WindowTestCase {
    id: testCase
    name: "ExportList"

    SignalSpy {
        id: exportedSpy
        target: RavelinthViewModel.operations
        signalName: "exported"
    }

    function exportItem(window) {
        const fileMenu = window.menuBar.menuAt(0)
        for (let i = 0; i < fileMenu.count; ++i) {
            const item = fileMenu.itemAt(i)
            if (item && item.text === "Export List...")
                return item
        }
        return null
    }

    function test_exportListOpensTheSaveDialog() {
        const window = openWindow()
        const item = exportItem(window)
        verify(item)
        verify(!item.enabled)

        scanPath(TestFiles.sparseTree({ "movie.mkv": 30 * mib, "notes.pdf": 10 * mib }), 2)
        verify(item.enabled)

        posted.clear()
        item.action.trigger()
        compare(posted.count, 1)
        compare(posted.signalArguments[0][0], "exportList")
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
