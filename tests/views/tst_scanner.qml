import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// The scan control panel as a user meets it: the button and the progress strip follow the scan,
// the threshold menu, the preset buttons and the progress texts. The hidden-files switch is with
// the other switches in tst_scanscope.qml.
ViewTestCase {
    id: testCase
    name: "ScannerView"
    visible: true
    width: 1000
    height: 420

    Component {
        id: scannerComponent
        ScannerView {
            x: 16
            y: 16
            width: 968
        }
    }
    Component {
        id: progressComponent
        ScanProgressView {
            width: 700
        }
    }

    readonly property var model: vm.scan
    function makeScanner() {
        return createTemporaryObject(scannerComponent, testCase)
    }

    // A folder large enough that a scan of it is still running when the test looks.
    readonly property string largeFolder: "/usr"

    function test_buttonAndStripFollowTheScanState() {
        const view = makeScanner()
        const strip = findChild(view, "scanProgress")

        const scanButton = findChild(view, "scanButton")
        const expectIdle = phase => {
            compare(model.state.phase, phase)
            compare([scanButton.title, scanButton.style, scanButton.icon],
                    ["Start Scan", "primary", "play.fill"], phase)
            verify(!strip.visible, phase)
        }
        // Every test starts after the scan of an empty folder.
        expectIdle(ScanPhase.Completed)

        model.path = largeFolder
        mouseClick(scanButton)
        compare(model.state.phase, ScanPhase.Scanning)
        compare([scanButton.title, scanButton.style, scanButton.icon],
                ["Stop Scan", "destructive", "stop.fill"])
        verify(!scanButton.isLoading)
        verify(strip.visible)
        tryVerify(() => model.state.filesScanned > 0, 10000)
        compare(findChild(strip, "statusMessage").text, model.state.statusMessage)

        mouseClick(scanButton)
        expectIdle(ScanPhase.Cancelled)
        tryVerify(() => model.state.phase === ScanPhase.Completed, 20000)
        expectIdle(ScanPhase.Completed)

        // A folder that is not there ends in the error state.
        model.path = "/nonexistent/ravelinth-test"
        mouseClick(scanButton)
        tryVerify(() => model.state.phase === ScanPhase.Error, 5000)
        expectIdle(ScanPhase.Error)
        compare(RavelinthViewModel.errorMessage, "Path not found: /nonexistent/ravelinth-test")
    }

    function test_thresholdMenuSetsTheMinimumSize() {
        const view = makeScanner()
        const menu = findChild(view, "thresholdMenu")
        const minSizeField = findChild(view, "minSizeField")
        compare([model.minFileSizeMB, minSizeField.text], [100, "100"])

        mouseClick(findChild(view, "thresholdButton"))
        tryCompare(menu, "opened", true)
        mouseClick(menu.itemAt(6))
        tryCompare(menu, "visible", false)
        compare(model.minFileSizeMB, 1024)
        compare(Number.fromLocaleString(Qt.locale(), minSizeField.text), 1024)
        menu.popup()
        tryCompare(menu, "opened", true)
        mouseClick(menu.itemAt(1))
        compare([model.minFileSizeMB, minSizeField.text], [25, "25"])

        // Typing a number sets it too; leaving the field shows what was stored.
        minSizeField.forceActiveFocus()
        minSizeField.selectAll()
        keyClick("7")
        keyClick("5")
        compare(model.minFileSizeMB, 75)
        keyClick(Qt.Key_Tab)
        compare(minSizeField.text, "75")
    }

    function test_quickScanReplacesThePathAndStarts() {
        const view = makeScanner()
        const pathField = findChild(view, "pathField")
        pathField.forceActiveFocus()
        pathField.selectAll()
        keyClick(Qt.Key_X)
        compare(model.path, "x")

        const applications = findChild(view, "quickScan_Applications")
        mouseClick(applications)
        const path = applications.location.path
        compare([model.path, pathField.text, model.state.phase, model.state.path],
                [path, path, ScanPhase.Scanning, path])

        // While a scan runs a preset still replaces the path but starts nothing new.
        const home = findChild(view, "quickScan_Home")
        mouseClick(home)
        compare([model.path, model.state.phase, model.state.path],
                [home.location.path, ScanPhase.Scanning, path])
        model.stop()
    }

    function test_progressStripTexts() {
        const forty = "abcdefghijklmnopqrstuvwxyz0123456789.mkv" // 40 characters
        const strip = createTemporaryObject(progressComponent, testCase, {
            statusMessage: "Scanning: " + forty + "\nFiles: 1234567",
            currentFile: "/data/films/" + forty, filesScanned: 1234567, bytesScanned: 1500000
        })
        const text = name => findChild(strip, name).text
        const pill = name => findChild(findChild(strip, name), "statPillValue").text
        compare([text("currentFileName"), pill("filesPill"), pill("bytesPill"), text("statusMessage")],
                [forty, TextFormat.groupedInteger(1234567), "1.5 MB",
                 "Scanning: " + forty + "\nFiles: 1234567"])

        strip.statusMessage = ""
        strip.currentFile = "/data/x" + forty
        strip.filesScanned = 0
        strip.bytesScanned = 0
        compare([text("currentFileName"), pill("bytesPill")],
                [("x" + forty).substring(0, 37) + "...", "Zero KB"])

        // At the start of a scan there is no file yet.
        strip.statusMessage = "Scanning: "
        strip.currentFile = ""
        compare(text("currentFileName"), "")
    }

    function test_tabWalksTheControlsInReadingOrder() {
        const view = makeScanner()
        findChild(view, "pathField").forceActiveFocus()
        const order = ["pathField", "browseButton", "minSizeField", "thresholdButton",
                       "hiddenFilesBox", "scanButton", "quickScan_Home", "quickScan_Downloads"]
        for (let i = 1; i < order.length; ++i) {
            keyClick(Qt.Key_Tab)
            compare(testCase.Window.activeFocusItem.objectName, order[i], "after " + order[i - 1])
        }
        // Space on a focused preset button scans that folder.
        keyClick(Qt.Key_Space)
        compare(model.path, AppContext.quickAccessLocations[1].path)
        model.stop()
    }
}
