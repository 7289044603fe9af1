import QtQuick
import QtQuick.Controls
import QtTest
import Ravelinth
import RavelinthTest

// The main window as a user meets it: the tabs, the toolbar follows the scan and the selection,
// select-all takes the listed files even from a text field, the error alert, the tutorial sheet,
// the settings window and the folder chooser.
WindowTestCase {
    id: testCase
    name: "Window"

    function test_opensOnTheScannerTabAndTheTabsSwitch() {
        const window = openWindow()
        verify(window.width >= window.minimumWidth && window.height >= window.minimumHeight)
        compare(content(window).selectedTab, "scanner")
        const dashboardTab = findChild(content(window), "tab_dashboard")
        mouseClick(dashboardTab)
        compare(content(window).selectedTab, "dashboard")
        verify(dashboardTab.isSelected)
        mouseClick(findChild(content(window), "tab_scanner"))
        compare(content(window).selectedTab, "scanner")
    }

    function test_toolbarFirstItemFollowsTheScan() {
        const window = openWindow()
        const button = part(window, "toolbarScanButton")
        const looks = () => [button.text, button.symbol, String(button.tint)]
        compare(looks(), ["Scan", "play.fill", String(Theme.accent)])
        vm.scan.path = "/usr"
        mouseClick(button)
        compare(vm.scan.state.phase, ScanPhase.Scanning)
        compare(looks(), ["Stop", "stop.fill", String(Theme.red)])
        mouseClick(button)
        compare(vm.scan.state.phase, ScanPhase.Cancelled)
        compare(looks(), ["Scan", "play.fill", String(Theme.accent)])
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed, 20000)
    }

    // Reveal and Trash act on the selection: without one they are off, and look it.
    function test_revealAndTrashNeedASelection() {
        const window = openWindow()
        scanPath(TestFiles.sparseTree({ "a.iso": 300 * mib, "b.iso": 200 * mib }), 2)
        const buttons = [part(window, "toolbarRevealButton"), part(window, "toolbarTrashButton")]
        const refresh = part(window, "toolbarRefreshButton")
        const expectEnabled = (enabled, why) => {
            for (const button of buttons) {
                compare(button.enabled, enabled, button.text + " " + why)
                compare(button.opacity < 1, !enabled, button.text + " looks it " + why)
            }
            verify(refresh.enabled && refresh.opacity === 1, "Refresh never depends on it")
        }
        expectEnabled(false, "with nothing selected")
        // A click on the faded Trash moves nothing.
        mouseClick(buttons[1])
        wait(200)
        compare(vm.fileList.fileCount, 2)
        vm.selection.selectOnly(0)
        expectEnabled(true, "with one file selected")
        vm.selection.selectAll()
        expectEnabled(true, "with every file selected")
        vm.selection.clear()
        expectEnabled(false, "after the selection is cleared")
    }

    // Each entry shows its keys, whether its action owns them or the focused field handles them
    // (Cut, Copy, Paste); the menus open from the keyboard by their underlined letters.
    function test_menuTitlesAndShortcuts() {
        const bar = openWindow().menuBar
        const entries = menu => Array.from({ length: menu.count }, (_, i) => menu.itemAt(i))
            .filter(item => item && item.text).map(item => item.text + (item.shortcutText ? " " + item.shortcutText : ""))
        compare(Array.from({ length: bar.count }, (_, i) => bar.menuAt(i).title), ["&File", "&Edit", "&Scan", "&View"])
        compare([0, 1, 2, 3].map(i => entries(bar.menuAt(i))),
                [["New Scan Ctrl+N", "Browse Folder... Ctrl+O", "Export List...", "Settings... Ctrl+,", "Quit Ctrl+Q"],
                 ["Undo Move to Trash Ctrl+Z", "Cut Ctrl+X", "Copy Ctrl+C", "Paste Ctrl+V", "Select All Ctrl+A"],
                 ["Start Scan Ctrl+Return", "Stop Scan Ctrl+.", "Quick Scan"],
                 ["Show Dashboard Ctrl+1", "Show Scanner Ctrl+2", "Refresh Disk Info Ctrl+R", "Hide Sidebar Ctrl+Alt+S"]])
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

        mouseClick(part(window, "toolbarSidebarButton"))
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
        expectPosted("selectAllFiles")
    }

    // The alert takes the keyboard on its button and gives it back where it was; OK, Return and
    // Escape all dismiss it, and the message goes with it.
    function test_errorAlertTakesTheKeyboardAndGivesItBack() {
        const window = openWindow()
        const alert = findChild(content(window), "errorAlert")
        const text = findChild(alert, "errorText")
        const ok = findChild(alert.footer, "errorButtons").standardButton(Dialog.Ok)
        verify(!alert.visible)
        vm.errorMessage = "Directory not found: /nowhere"
        tryCompare(alert, "opened", true)
        compare([alert.title, text.text, ok.text], ["Error", "Directory not found: /nowhere", "OK"])
        // A new message while the alert is up replaces its text.
        vm.errorMessage = "Second failure"
        compare(text.text, "Second failure")
        mouseClick(ok)
        tryCompare(alert, "visible", false)
        compare(vm.errorMessage, "")

        // A failed scan reaches the user the same way.
        const field = scannerPart(window, "pathField")
        field.forceActiveFocus()
        vm.scan.path = "/nonexistent/ravelinth-test"
        vm.scan.start()
        tryCompare(alert, "opened", true)
        verify(text.text.indexOf("/nonexistent/ravelinth-test") >= 0, text.text)
        tryVerify(() => ok.activeFocus)
        keyClick(Qt.Key_Return)
        tryCompare(alert, "visible", false)
        compare(vm.errorMessage, "")
        tryVerify(() => field.activeFocus, 1000, String(window.activeFocusItem))

        vm.errorMessage = "Third failure"
        tryCompare(alert, "opened", true)
        keyClick(Qt.Key_Escape)
        tryCompare(alert, "visible", false)
        compare(vm.errorMessage, "")
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

    // Help shows the tutorial over a dimmed window, with the keyboard on its Next button; Escape
    // closes it and the keyboard goes back where it was. It opens again as often as asked.
    function test_helpButtonShowsTheTutorialOverADimmedWindow() {
        const window = openWindow()
        const sheet = findChild(content(window), "onboardingSheet")
        const field = scannerPart(window, "pathField")
        verify(!sheet.visible)
        field.forceActiveFocus()
        mouseClick(findChild(content(window), "helpButton"))
        tryCompare(sheet, "opened", true)
        verify(sheet.modal && sheet.dim)
        const next = findChild(sheet.contentItem, "nextButton")
        tryVerify(() => next.activeFocus, 1000, String(window.activeFocusItem))
        keyClick(Qt.Key_Escape)
        tryCompare(sheet, "visible", false)
        compare(content(window).showOnboarding, false)
        tryVerify(() => field.activeFocus, 1000, String(window.activeFocusItem))

        mouseClick(findChild(content(window), "helpButton"))
        tryCompare(sheet, "opened", true)
        content(window).showOnboarding = false
        tryCompare(sheet, "visible", false)
    }

    // The settings window follows the root's request both ways, and makes its view afresh each
    // time it opens.
    function test_settingsWindowFollowsShowSettings() {
        const window = openWindow()
        const settings = findChild(window, "settingsWindow")
        verify(!settings.visible)
        keyClick(Qt.Key_Comma, Qt.ControlModifier)
        compare(vm.showSettings, true)
        tryCompare(settings, "visible", true)
        tryVerify(() => settingsView(settings) !== null)
        settings.close()
        tryCompare(settings, "visible", false)
        tryCompare(vm, "showSettings", false)
        tryVerify(() => settingsView(settings) === null)
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
        const list = part(window, "folderDialogListView")
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
