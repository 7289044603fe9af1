import QtQuick
import QtTest
import Ravelinth

// The scan control panel as a user meets it: the button and the progress strip follow the scan,
// the threshold menu, the preset buttons, the hidden-files switch, and the progress texts.
TestCase {
    id: testCase
    name: "ScannerView"
    when: windowShown
    visible: true
    width: 1000
    height: 420

    Component {
        id: scannerComponent
        Rectangle {
            width: 1000
            height: 420
            color: Theme.windowBackground
            property alias view: view
            property alias viewModel: model
            RavelinthViewModel {
                id: model
            }
            ScannerView {
                id: view
                x: 16
                y: 16
                width: 968
                viewModel: model
            }
        }
    }

    Component {
        id: progressComponent
        ScanProgressView {
            width: 700
        }
    }

    function makeScanner() {
        const page = createTemporaryObject(scannerComponent, testCase)
        verify(page)
        return page
    }

    // A folder large enough that a scan of it is still running when the test looks.
    readonly property string largeFolder: "/usr"

    function test_buttonAndStripFollowTheScanState() {
        const page = makeScanner()
        const view = page.view
        const model = page.viewModel
        const strip = findChild(view, "scanProgress")

        const expectIdle = state => {
            compare(model.scanState.kind, state)
            compare([view.scanButton.title, view.scanButton.style, view.scanButton.icon],
                    ["Start Scan", "primary", "play.fill"], state)
            verify(!strip.visible, state)
        }
        expectIdle("idle")

        model.scanPath = largeFolder
        mouseClick(view.scanButton)
        compare(model.scanState.kind, "scanning")
        compare([view.scanButton.title, view.scanButton.style, view.scanButton.icon],
                ["Stop Scan", "destructive", "stop.fill"])
        verify(!view.scanButton.isLoading)
        verify(strip.visible)
        tryVerify(() => model.scanState.filesScanned > 0, 10000)
        compare(findChild(strip, "statusMessage").text, model.scanState.statusMessage)

        mouseClick(view.scanButton)
        expectIdle("cancelled")
        tryVerify(() => model.scanState.kind === "completed", 20000)
        expectIdle("completed")

        // A folder that is not there ends in the error state.
        model.scanPath = "/nonexistent/ravelinth-test"
        mouseClick(view.scanButton)
        tryVerify(() => model.scanState.kind === "error", 5000)
        expectIdle("error")
        compare(model.errorMessage, "Path not found: /nonexistent/ravelinth-test")
    }

    function test_thresholdMenuSetsTheMinimumSize() {
        const page = makeScanner()
        const view = page.view
        const model = page.viewModel
        const menu = view.thresholdMenu
        compare([model.minFileSizeMB, view.minSizeField.text], [100, "100"])
        compare(Array.from({ length: menu.count }, (_, i) => menu.itemAt(i).text),
                ["10 MB", "25 MB", "50 MB", "100 MB", "250 MB", "500 MB", "1 GB"])

        mouseClick(findChild(view, "thresholdButton"))
        tryCompare(menu, "opened", true)
        mouseClick(menu.itemAt(6))
        tryCompare(menu, "visible", false)
        compare(model.minFileSizeMB, 1024)
        compare(Number.fromLocaleString(Qt.locale(), view.minSizeField.text), 1024)
        menu.popup()
        tryCompare(menu, "opened", true)
        mouseClick(menu.itemAt(1))
        compare([model.minFileSizeMB, view.minSizeField.text], [25, "25"])

        // Typing a number sets it too; leaving the field shows what was stored.
        view.minSizeField.forceActiveFocus()
        view.minSizeField.selectAll()
        keyClick("7")
        keyClick("5")
        compare(model.minFileSizeMB, 75)
        keyClick(Qt.Key_Tab)
        compare(view.minSizeField.text, "75")
    }

    function test_quickScanReplacesThePathAndStarts() {
        const page = makeScanner()
        const view = page.view
        const model = page.viewModel
        // One button per location; the table itself is checked in tst_classification.
        for (const location of AppContext.quickAccessLocations)
            compare(findChild(view, "quickScan_" + location.name).location.path, location.path)

        view.pathField.forceActiveFocus()
        view.pathField.selectAll()
        keyClick(Qt.Key_X)
        compare(model.scanPath, "x")

        const applications = findChild(view, "quickScan_Applications")
        mouseClick(applications)
        const path = applications.location.path
        compare([model.scanPath, view.pathField.text, model.scanState.kind, model.scanState.path],
                [path, path, "scanning", path])

        // While a scan runs a preset still replaces the path but starts nothing new.
        const home = findChild(view, "quickScan_Home")
        mouseClick(home)
        compare([model.scanPath, model.scanState.kind, model.scanState.path],
                [home.location.path, "scanning", path])
        model.stopScan()
    }

    function test_hiddenFilesSwitch() {
        const page = makeScanner()
        const box = findChild(page.view, "hiddenFilesBox")
        compare(box.text, "Hidden Files")
        verify(!page.viewModel.includeHiddenFiles)
        mouseClick(box)
        verify(page.viewModel.includeHiddenFiles)
        page.viewModel.includeHiddenFiles = false
        verify(!box.checked)
    }

    function test_progressStripTexts() {
        const forty = "abcdefghijklmnopqrstuvwxyz0123456789.mkv" // 40 characters
        const strip = createTemporaryObject(progressComponent, testCase, {
            scanState: { kind: "scanning", statusMessage: "Scanning: " + forty + "\nFiles: 1234567",
                         path: "/data", currentFile: "/data/films/" + forty,
                         filesScanned: 1234567, bytesScanned: 1500000 }
        })
        const text = name => findChild(strip, name).text
        const pill = name => findChild(findChild(strip, name), "statPillValue").text
        compare([text("currentFileName"), pill("filesPill"), pill("bytesPill"), text("statusMessage")],
                [forty, AppContext.formatGroupedInteger(1234567), "1.5 MB",
                 "Scanning: " + forty + "\nFiles: 1234567"])

        strip.scanState = { kind: "scanning", statusMessage: "", currentFile: "/data/x" + forty,
                            filesScanned: 0, bytesScanned: 0 }
        compare([text("currentFileName"), pill("bytesPill")],
                [("x" + forty).substring(0, 37) + "...", "Zero KB"])

        // At the start of a scan there is no file yet.
        strip.scanState = { kind: "scanning", statusMessage: "Scanning: ", currentFile: "",
                            filesScanned: 0, bytesScanned: 0 }
        compare(text("currentFileName"), "")
    }

    function test_tabWalksTheControlsInReadingOrder() {
        const page = makeScanner()
        const view = page.view
        view.pathField.forceActiveFocus()
        const order = ["pathField", "browseButton", "minSizeField", "thresholdButton",
                       "hiddenFilesBox", "scanButton", "quickScan_Home", "quickScan_Downloads"]
        for (let i = 1; i < order.length; ++i) {
            keyClick(Qt.Key_Tab)
            compare(testCase.Window.activeFocusItem.objectName, order[i], "after " + order[i - 1])
        }
        // Space on a focused preset button scans that folder.
        keyClick(Qt.Key_Space)
        compare(page.viewModel.scanPath, AppContext.quickAccessLocations[1].path)
        page.viewModel.stopScan()
    }

    function test_zzScreenshot() {
        const page = makeScanner()
        page.viewModel.scanPath = largeFolder
        page.viewModel.startScan()
        tryVerify(() => page.viewModel.scanState.filesScanned > 0, 10000)
        wait(300)
        grabImage(page).save("scanner-scanning.png")
        page.viewModel.stopScan()
    }
}
