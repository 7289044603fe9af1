import QtQuick
import QtQuick.Window
import QtTest
import Ravelinth
import RavelinthTest

// The settings window by keyboard alone: it opens over the middle of the main window, Escape and
// Ctrl+W close it, Ctrl+Tab and Ctrl+Shift+Tab go round its tabs, and the tabs take Tab focus
// and answer Space and Return.
TestCase {
    id: testCase
    name: "SettingsKeys"
    when: windowShown

    readonly property var vm: RavelinthViewModel
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
    Component {
        id: settingsWindowComponent
        SettingsWindow {}
    }
    function cleanup() {
        vm.showSettings = false
    }

    function openSettings() {
        const owner = createTemporaryObject(ownerComponent, null)
        const window = createTemporaryObject(settingsWindowComponent, null, { transientParent: owner })
        vm.showSettings = true
        window.show()
        window.requestActivate()
        tryVerify(() => window.active, 5000)
        tryVerify(() => view(window) !== null)
        waitForRendering(window.contentItem)
        return window
    }
    function view(window) {
        const loader = findChild(window.contentItem, "settingsLoader")
        return loader ? loader.item : null
    }

    function test_opensOverTheMiddleOfItsWindow() {
        const window = openSettings()
        compare([window.x, window.y], [100 + (1000 - 480) / 2, 80 + (700 - 430) / 2])
    }

    function test_escapeAndCtrlWClose() {
        const keys = [[Qt.Key_Escape, Qt.NoModifier, "Escape"], [Qt.Key_W, Qt.ControlModifier, "Ctrl+W"]]
        for (const [key, modifiers, what] of keys) {
            const window = openSettings()
            keyClick(key, modifiers)
            tryCompare(window, "visible", false, 2000, what)
            verify(!vm.showSettings, what + " withdraws the request")
        }
    }

    function test_escapeClosesAnOpenPickerFirst() {
        const window = openSettings()
        const picker = findChild(view(window), "sizePicker")
        mouseClick(picker)
        tryVerify(() => picker.popup.opened)
        keyClick(Qt.Key_Escape)
        tryVerify(() => !picker.popup.visible)
        verify(window.visible)
        keyClick(Qt.Key_Escape)
        tryCompare(window, "visible", false)
    }

    function test_ctrlTabGoesRoundTheTabs() {
        const window = openSettings()
        const settings = view(window)
        compare(settings.currentTab, 0)
        // Forward round and past the end, then back round past the start; Shift+Tab arrives
        // from a real keyboard as Backtab, from some input methods as Tab with Shift.
        const steps = [[Qt.Key_Tab, Qt.ControlModifier, 1], [Qt.Key_Tab, Qt.ControlModifier, 2],
                       [Qt.Key_Tab, Qt.ControlModifier, 3], [Qt.Key_Tab, Qt.ControlModifier, 0],
                       [Qt.Key_Backtab, Qt.ControlModifier | Qt.ShiftModifier, 3],
                       [Qt.Key_Backtab, Qt.ControlModifier | Qt.ShiftModifier, 2],
                       [Qt.Key_Tab, Qt.ControlModifier | Qt.ShiftModifier, 1],
                       [Qt.Key_Backtab, Qt.ControlModifier | Qt.ShiftModifier, 0]]
        for (const [key, modifiers, expected] of steps) {
            keyClick(key, modifiers)
            compare(settings.currentTab, expected)
        }
    }

    function test_tabsTakeFocusAndAnswerSpaceAndReturn() {
        const window = openSettings()
        const settings = view(window)
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
        wait(100)
        grabImage(window.contentItem).save("settings-tab-focus.png")
    }
}
