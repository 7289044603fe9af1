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

    function findChild(item, name) {
        if (!item)
            return null
        if (item.objectName === name)
            return item
        const children = item.children || []
        for (let i = 0; i < children.length; ++i) {
            const found = findChild(children[i], name)
            if (found)
                return found
        }
        if (item.contentItem && item.contentItem !== item) {
            const found = findChild(item.contentItem, name)
            if (found)
                return found
        }
        return null
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

        compare(model.scanState.kind, "idle")
        compare(view.scanButton.title, "Start Scan")
        compare(view.scanButton.style, "primary")
        compare(view.scanButton.icon, "play.fill")
        verify(!strip.visible)

        model.scanPath = largeFolder
        mouseClick(view.scanButton)
        compare(model.scanState.kind, "scanning")
        compare(view.scanButton.title, "Stop Scan")
        compare(view.scanButton.style, "destructive")
        compare(view.scanButton.icon, "stop.fill")
        verify(!view.scanButton.isLoading)
        verify(strip.visible)
        tryVerify(() => model.scanState.filesScanned > 0, 10000)
        compare(findChild(strip, "statusMessage").text, model.scanState.statusMessage)

        mouseClick(view.scanButton)
        compare(model.scanState.kind, "cancelled")
        compare(view.scanButton.title, "Start Scan")
        verify(!strip.visible)
        tryVerify(() => model.scanState.kind === "completed", 20000)
        compare(view.scanButton.title, "Start Scan")
        verify(!strip.visible)

        // A folder that is not there ends in the error state.
        model.scanPath = "/nonexistent/ravelinth-test"
        mouseClick(view.scanButton)
        tryVerify(() => model.scanState.kind === "error", 5000)
        compare(view.scanButton.title, "Start Scan")
        verify(!strip.visible)
        verify(model.errorMessage !== "")
    }

    function test_thresholdMenuSetsTheMinimumSize() {
        const page = makeScanner()
        const view = page.view
        const model = page.viewModel
        compare(model.minFileSizeMB, 100)
        compare(view.minSizeField.text, "100")

        const titles = []
        for (let i = 0; i < view.thresholdMenu.count; ++i)
            titles.push(view.thresholdMenu.itemAt(i).text)
        compare(titles, ["10 MB", "25 MB", "50 MB", "100 MB", "250 MB", "500 MB", "1 GB"])

        mouseClick(findChild(view, "thresholdButton"))
        tryCompare(view.thresholdMenu, "opened", true)
        const oneGigabyte = view.thresholdMenu.itemAt(6)
        mouseClick(oneGigabyte)
        tryCompare(view.thresholdMenu, "visible", false)
        compare(model.minFileSizeMB, 1024)
        compare(Number.fromLocaleString(Qt.locale(), view.minSizeField.text), 1024)

        view.thresholdMenu.popup()
        tryCompare(view.thresholdMenu, "opened", true)
        mouseClick(view.thresholdMenu.itemAt(1))
        compare(model.minFileSizeMB, 25)
        compare(view.minSizeField.text, "25")

        // Typing a number sets it too; leaving the field shows what was stored.
        view.minSizeField.forceActiveFocus()
        view.minSizeField.selectAll()
        keyClick(Qt.Key_7)
        keyClick(Qt.Key_5)
        compare(model.minFileSizeMB, 75)
        keyClick(Qt.Key_Tab)
        compare(view.minSizeField.text, "75")
    }

    function test_quickScanReplacesThePathAndStarts() {
        const page = makeScanner()
        const view = page.view
        const model = page.viewModel
        const locations = AppContext.quickAccessLocations
        compare(locations.length, 6)
        const names = []
        for (let i = 0; i < locations.length; ++i)
            names.push(findChild(view, "quickScan_" + locations[i].name).location.name)
        compare(names, ["Home", "Downloads", "Desktop", "Documents", "Applications", "Library"])

        view.pathField.forceActiveFocus()
        view.pathField.selectAll()
        keyClick(Qt.Key_X)
        compare(model.scanPath, "x")

        const applications = findChild(view, "quickScan_Applications")
        mouseClick(applications)
        compare(model.scanPath, applications.location.path)
        compare(view.pathField.text, applications.location.path)
        compare(model.scanState.kind, "scanning")
        compare(model.scanState.path, applications.location.path)

        // While a scan runs a preset still replaces the path but starts nothing new.
        const home = findChild(view, "quickScan_Home")
        mouseClick(home)
        compare(model.scanPath, home.location.path)
        compare(model.scanState.kind, "scanning")
        compare(model.scanState.path, applications.location.path)
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
        const forty = "abcdefghijklmnopqrstuvwxyz0123456789.mkv"
        compare(forty.length, 40)
        const strip = createTemporaryObject(progressComponent, testCase, {
            scanState: { kind: "scanning", statusMessage: "Scanning: " + forty + "\nFiles: 1234567",
                         path: "/data", currentFile: "/data/films/" + forty,
                         filesScanned: 1234567, bytesScanned: 1500000 }
        })
        compare(findChild(strip, "currentFileName").text, forty)
        compare(findChild(findChild(strip, "filesPill"), "statPillValue").text,
                AppContext.formatGroupedInteger(1234567))
        compare(findChild(findChild(strip, "bytesPill"), "statPillValue").text, "1.5 MB")
        compare(findChild(strip, "statusMessage").text, "Scanning: " + forty + "\nFiles: 1234567")

        strip.scanState = { kind: "scanning", statusMessage: "", currentFile: "/data/x" + forty,
                            filesScanned: 0, bytesScanned: 0 }
        compare(findChild(strip, "currentFileName").text, ("x" + forty).substring(0, 37) + "...")
        compare(findChild(findChild(strip, "bytesPill"), "statPillValue").text, "Zero KB")

        // At the start of a scan there is no file yet.
        strip.scanState = { kind: "scanning", statusMessage: "Scanning: ", currentFile: "",
                            filesScanned: 0, bytesScanned: 0 }
        compare(findChild(strip, "currentFileName").text, "")
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
