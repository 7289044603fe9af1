import QtQuick
import QtQuick.Window
import QtTest
import Ravelinth
import RavelinthTest

// The settings: what its controls store and when, the shortcut reference, and the window by
// keyboard alone (it opens over the middle of the main window, Escape and Ctrl+W close it,
// Ctrl+Tab and Ctrl+Shift+Tab go round its tabs, and the tabs take Tab focus and answer Space and
// Return).
WindowTestCase {
    id: testCase
    name: "Settings"
    visible: true
    width: 450
    height: 350

    Component {
        id: settingsComponent
        SettingsView {
            width: 450
            height: 350
        }
    }
    Component {
        id: ownerComponent
        Window {
            x: 100
            y: 80
            width: 1000
            height: 700
            visible: true
        }
    }

    // The one store of preferences; each test puts back what it changed.
    readonly property Preferences preferences: RavelinthViewModel.preferences
    property var storedBefore
    function init() {
        storedBefore = {}
        for (const key of ["defaultMinSizeMB", "includeHiddenFiles", "skipSystemDirectories",
                           "showSizesInBinary", "confirmBeforeDelete"])
            storedBefore[key] = preferences[key]
    }
    function cleanup() {
        for (const key in storedBefore)
            preferences[key] = storedBefore[key]
        resetRoot()
    }

    function shortcutRows(item, found) {
        found = found || []
        if (item.keys !== undefined && item.action !== undefined && typeof item.keys === "string")
            found.push([item.keys, item.action])
        for (let i = 0; i < item.children.length; ++i)
            shortcutRows(item.children[i], found)
        return found
    }
    function choose(picker, index) {
        mouseClick(picker)
        tryVerify(() => picker.popup.opened)
        const list = picker.popup.contentItem
        tryVerify(() => list.itemAtIndex(index) !== null)
        mouseClick(list.itemAtIndex(index))
        tryVerify(() => !picker.popup.visible)
    }

    function test_unmatchedStoredSizeShowsNoChoiceAndIsKept() {
        preferences.defaultMinSizeMB = 75.0
        const page = createTemporaryObject(settingsComponent, testCase)
        const sizePicker = findChild(page, "sizePicker")
        compare(sizePicker.currentIndex, -1)
        compare(sizePicker.displayText, "")
        mouseClick(findChild(page, "hiddenFilesToggle"))
        mouseClick(findChild(page, "binarySizesToggle"))
        compare(Number(preferences.defaultMinSizeMB), 75)
        verify(TestFiles.settingsFileText().indexOf("defaultMinSizeMB=75\n") >= 0,
               TestFiles.settingsFileText())
        choose(sizePicker, 2)
        compare(Number(preferences.defaultMinSizeMB), 50)
    }

    function test_shortcutsUseThisPlatformsKeys() {
        const page = createTemporaryObject(settingsComponent, testCase)
        mouseClick(findChild(page, "shortcutsTab"))
        compare(page.currentTab, 2)
        compare(shortcutRows(page),
                [["Ctrl N", "New Scan"], ["Ctrl O", "Browse for Folder"], ["Ctrl .", "Stop Scan"],
                 ["Ctrl F", "Search Files"], ["Ctrl A", "Select All"], ["Ctrl Shift A", "Deselect All"],
                 ["Ctrl Backspace", "Move to Trash"], ["Ctrl Shift G", "Reveal in File Manager"],
                 ["Space", "Quick Look"]])
    }

    function test_aboutNamesThisPlatform() {
        const page = createTemporaryObject(settingsComponent, testCase)
        mouseClick(findChild(page, "aboutTab"))
        compare(page.currentTab, 3)
        const shown = []
        const collect = item => {
            if (typeof item.text === "string")
                shown.push(item.text)
            for (let i = 0; i < item.children.length; ++i)
                collect(item.children[i])
        }
        collect(page)
        verify(shown.indexOf("A powerful disk space analyzer for Linux. Find and clean up large files, installers, and archives to free up storage space.") >= 0)
    }

    function test_opensOverTheMiddleOfItsWindow() {
        const window = openSettings(createTemporaryObject(ownerComponent, null))
        compare([window.x, window.y], [100 + (1000 - window.width) / 2, 80 + (700 - window.height) / 2])
    }

    function test_escapeAndCtrlWClose() {
        for (const [key, modifiers, what] of [[Qt.Key_Escape, Qt.NoModifier, "Escape"],
                                              [Qt.Key_W, Qt.ControlModifier, "Ctrl+W"]]) {
            const window = openSettings()
            keyClick(key, modifiers)
            tryCompare(window, "visible", false, 2000, what)
            verify(!vm.showSettings, what + " withdraws the request")
        }
    }

    function test_escapeClosesAnOpenPickerFirst() {
        const window = openSettings()
        const picker = findChild(settingsView(window), "sizePicker")
        mouseClick(picker)
        tryVerify(() => picker.popup.opened)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !picker.popup.visible)
        verify(window.visible)
        keyClick(Qt.Key_Escape)
        tryCompare(window, "visible", false)
    }

    function test_ctrlTabGoesRoundTheTabs() {
        const settings = settingsView(openSettings())
        compare(settings.currentTab, 0)
        // Forward round and past the end, then back round past the start; Shift+Tab arrives
        // from a real keyboard as Backtab, from some input methods as Tab with Shift.
        const back = Qt.ControlModifier | Qt.ShiftModifier
        for (const [key, modifiers, expected] of [[Qt.Key_Tab, Qt.ControlModifier, 1],
                                                  [Qt.Key_Tab, Qt.ControlModifier, 2],
                                                  [Qt.Key_Tab, Qt.ControlModifier, 3],
                                                  [Qt.Key_Tab, Qt.ControlModifier, 0],
                                                  [Qt.Key_Backtab, back, 3], [Qt.Key_Backtab, back, 2],
                                                  [Qt.Key_Tab, back, 1], [Qt.Key_Backtab, back, 0]]) {
            keyClick(key, modifiers)
            compare(settings.currentTab, expected)
        }
    }

    function test_tabsTakeFocusAndAnswerSpaceAndReturn() {
        const settings = settingsView(openSettings())
        const tabs = ["generalTab", "exclusionsTab", "shortcutsTab", "aboutTab"].map(name => findChild(settings, name))
        const ring = tab => tab.children[0].border.width
        tabs[0].forceActiveFocus()
        verify(tabs[0].activeFocus)
        compare(ring(tabs[0]), 2)
        keyClick(Qt.Key_Tab)
        verify(tabs[1].activeFocus)
        compare([ring(tabs[0]), ring(tabs[1])], [0, 2])
        compare(settings.currentTab, 0) // focus alone does not switch
        keyClick(Qt.Key_Space)
        compare(settings.currentTab, 1)
        verify(tabs[1].selected && !tabs[0].selected)
        keyClick(Qt.Key_Tab)
        verify(tabs[2].activeFocus)
        keyClick(Qt.Key_Return)
        compare(settings.currentTab, 2)
        keyClick(Qt.Key_Backtab, Qt.ShiftModifier)
        keyClick(Qt.Key_Backtab, Qt.ShiftModifier)
        verify(tabs[0].activeFocus)
        keyClick(Qt.Key_Enter)
        compare(settings.currentTab, 0)
    }
}
