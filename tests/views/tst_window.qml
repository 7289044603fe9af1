import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// The main window as a user meets it: the toolbar follows the scan, the menus' titles and keys,
// select-all takes the listed files even from a text field, the error alert, the tutorial sheet
// and the settings window.
WindowTestCase {
    id: testCase
    name: "Window"

    function test_opensAtLeastMinimumSizeOnTheScannerTab() {
        const window = openWindow()
        verify(window.width >= 1200)
        verify(window.height >= 800)
        compare(window.minimumWidth, 1200)
        compare(window.minimumHeight, 800)
        compare(content(window).selectedTab, "scanner")
        const dashboardTab = findChild(content(window), "tab_dashboard")
        compare(dashboardTab.title, "Dashboard")
        mouseClick(dashboardTab)
        compare(content(window).selectedTab, "dashboard")
        verify(dashboardTab.isSelected)
        mouseClick(findChild(content(window), "tab_scanner"))
        compare(content(window).selectedTab, "scanner")
    }

    function test_toolbarFirstItemFollowsTheScan() {
        const window = openWindow()
        const button = findChild(window.contentItem.parent, "toolbarScanButton")
        compare(button.text, "Scan")
        compare(button.symbol, "play.fill")
        compare(String(button.tint), String(Theme.accent))

        vm.scan.path = "/usr"
        mouseClick(button)
        compare(vm.scan.state.phase, ScanPhase.Scanning)
        compare(button.text, "Stop")
        compare(button.symbol, "stop.fill")
        compare(String(button.tint), String(Theme.red))

        mouseClick(button)
        compare(vm.scan.state.phase, ScanPhase.Cancelled)
        compare(button.text, "Scan")
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed, 20000)
    }

    function test_menuTitlesAndShortcuts() {
        const window = openWindow()
        const bar = window.menuBar
        const menus = []
        for (let i = 0; i < bar.count; ++i)
            menus.push(bar.menuAt(i).title)
        compare(menus, ["&File", "&Edit", "&Scan", "&View"])
        function entries(menu) {
            const list = []
            for (let i = 0; i < menu.count; ++i) {
                const item = menu.itemAt(i)
                if (item && item.text !== undefined && item.text !== "")
                    list.push(item.text + (item.shortcutText ? " " + item.shortcutText : ""))
            }
            return list
        }
        compare(entries(bar.menuAt(0)),
                ["New Scan Ctrl+N", "Browse Folder... Ctrl+O", "Export List...", "Settings... Ctrl+,",
                 "Quit Ctrl+Q"])
        compare(entries(bar.menuAt(1)), ["Undo Move to Trash Ctrl+Z", "Cut Ctrl+X", "Copy Ctrl+C",
                                         "Paste Ctrl+V", "Select All Ctrl+A"])
        compare(entries(bar.menuAt(2)), ["Start Scan Ctrl+Return", "Stop Scan Ctrl+.", "Quick Scan"])
        compare(entries(bar.menuAt(3)),
                ["Show Dashboard Ctrl+1", "Show Scanner Ctrl+2", "Refresh Disk Info Ctrl+R",
                 "Hide Sidebar Ctrl+Alt+S"])
    }

    function test_sidebarHidesAndComesBack() {
        const window = openWindow()
        const sidebar = findChild(content(window), "sidebar")
        const scanner = findChild(window.contentItem, "scannerView")
        verify(sidebar.visible)
        const besideSidebar = scanner.mapToItem(window.contentItem, 0, 0).x
        verify(besideSidebar >= 200)

        keyClick(Qt.Key_S, Qt.ControlModifier | Qt.AltModifier)
        verify(!sidebar.visible)
        tryVerify(() => scanner.mapToItem(window.contentItem, 0, 0).x < besideSidebar - 150)
        compare(window.menuBar.menuAt(3).itemAt(4).text, "Show Sidebar")

        mouseClick(findChild(window.contentItem.parent, "toolbarSidebarButton"))
        verify(sidebar.visible)
        tryVerify(() => scanner.mapToItem(window.contentItem, 0, 0).x === besideSidebar)
    }

    function test_selectAllTakesTheFilesEvenFromATextField() {
        const window = openWindow()
        vm.scan.minFileSizeMB = 0.001
        vm.scan.path = "/usr/share/common-licenses"
        vm.scan.start()
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed, 20000)
        tryVerify(() => vm.fileList.count > 0, 10000) // the list is published after the state
        compare(vm.selection.count, 0)

        const field = scannerPart(window, "pathField")
        mouseClick(field)
        verify(field.activeFocus)
        posted.clear()
        keyClick(Qt.Key_A, Qt.ControlModifier)
        compare(vm.selection.count, vm.fileList.count)
        compare(field.selectedText, "")
        compare(posted.count, 1)
        compare(posted.signalArguments[0][0], "selectAllFiles")
    }

    function test_errorAlert() {
        const window = openWindow()
        const model = vm
        const alert = findChild(content(window), "errorAlert")
        verify(!alert.visible)
        model.errorMessage = "Directory not found: /nowhere"
        tryCompare(alert, "opened", true)
        compare(alert.title, "Error")
        compare(findChild(alert, "errorText").text, "Directory not found: /nowhere")

        // A new message while the alert is up replaces its text.
        model.errorMessage = "Second failure"
        compare(findChild(alert, "errorText").text, "Second failure")
        verify(alert.visible)

        const ok = alert.standardButton(0x00000400) // Dialog.Ok
        verify(ok)
        compare(ok.text, "OK")
        mouseClick(ok)
        tryCompare(alert, "visible", false)
        compare(model.errorMessage, "")

        // A failed scan reaches the user the same way.
        vm.scan.path = "/nonexistent/ravelinth-test"
        vm.scan.start()
        tryCompare(alert, "opened", true)
        verify(findChild(alert, "errorText").text.indexOf("/nonexistent/ravelinth-test") >= 0)
        keyClick(Qt.Key_Return)
        tryCompare(alert, "visible", false)
        compare(model.errorMessage, "")

        // Escape dismisses it too, and the message goes with it.
        model.errorMessage = "Third failure"
        tryCompare(alert, "opened", true)
        keyClick(Qt.Key_Escape)
        tryCompare(alert, "visible", false)
        compare(model.errorMessage, "")
    }

    function test_firstLaunchShowsTheTutorialLaterOnesDoNot() {
        const preferences = vm.preferences
        const seenBefore = preferences.hasSeenOnboarding
        preferences.hasSeenOnboarding = false
        const first = createTemporaryObject(mainComponent, null)
        verify(content(first).showOnboarding)
        tryCompare(findChild(content(first), "onboardingSheet"), "opened", true)
        compare(content(first).selectedTab, "scanner")
        first.destroy()

        preferences.hasSeenOnboarding = true
        const later = createTemporaryObject(mainComponent, null)
        verify(!content(later).showOnboarding)
        wait(100)
        verify(!findChild(content(later), "onboardingSheet").visible)
        preferences.hasSeenOnboarding = seenBefore
    }

    function test_helpButtonShowsTheTutorialOverADimmedWindow() {
        const window = openWindow()
        const sheet = findChild(content(window), "onboardingSheet")
        verify(!sheet.visible)
        mouseClick(findChild(content(window), "helpButton"))
        tryCompare(sheet, "opened", true)
        verify(sheet.modal)
        verify(sheet.dim)
        keyClick(Qt.Key_Escape)
        tryCompare(sheet, "visible", false)
        compare(content(window).showOnboarding, false)
        // It opens again as often as asked.
        mouseClick(findChild(content(window), "helpButton"))
        tryCompare(sheet, "opened", true)
        content(window).showOnboarding = false
        tryCompare(sheet, "visible", false)
    }

    function test_settingsWindowFollowsShowSettings() {
        const window = openWindow()
        const settings = findChild(window, "settingsWindow")
        verify(!settings.visible)
        keyClick(Qt.Key_Comma, Qt.ControlModifier)
        compare(vm.showSettings, true)
        tryCompare(settings, "visible", true)
        settings.close()
        tryCompare(settings, "visible", false)
        tryCompare(vm, "showSettings", false)
        vm.showSettings = true
        tryCompare(settings, "visible", true)
        vm.showSettings = false
        tryCompare(settings, "visible", false)
    }

    function test_browseChoosesAFolder() {
        const window = openWindow()
        const chooser = findChild(content(window), "folderChooser")
        vm.scan.path = "/usr/share"
        mouseClick(scannerPart(window, "browseButton"))
        tryVerify(() => chooser.visible, 5000)
        compare(chooser.title, "Select Folder to Scan")
        compare(String(chooser.currentFolder), "file:///usr/share")
        const list = findChild(window.contentItem.parent, "folderDialogListView")
        verify(list)
        tryVerify(() => list.count > 0, 5000)

        // Open without picking a row chooses the folder being shown, not the first row.
        wait(100)
        chooser.accept()
        tryVerify(() => !chooser.visible, 5000)
        tryCompare(vm.scan, "path", "/usr/share")

        // A row the user picked is the choice.
        mouseClick(scannerPart(window, "browseButton"))
        tryVerify(() => chooser.visible, 5000)
        tryVerify(() => list.count > 2, 5000)
        wait(100)
        list.currentIndex = 2
        const picked = list.currentItem.file
        chooser.accept()
        tryVerify(() => !chooser.visible, 5000)
        tryCompare(vm.scan, "path", decodeURIComponent(String(picked).substring(7)))

        // Cancelling keeps the path.
        vm.scan.path = "/usr/share"
        mouseClick(scannerPart(window, "browseButton"))
        tryVerify(() => chooser.visible, 5000)
        chooser.reject()
        tryVerify(() => !chooser.visible, 5000)
        wait(50)
        compare(vm.scan.path, "/usr/share")
    }
}
