import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

TestCase {
    id: testCase
    name: "Settings"
    when: windowShown
    visible: true
    width: 450
    height: 350

    Component {
        id: settingsComponent
        Rectangle {
            width: 450
            height: 350
            color: Theme.windowBackground
            SettingsView {
                objectName: "settingsView"
                anchors.fill: parent
            }
        }
    }
    Component {
        id: settingsWindowComponent
        SettingsWindow {}
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
        RavelinthViewModel.showSettings = false
    }
    function part(page, name) {
        return findChild(page, name)
    }

    function texts(item, found) {
        found = found || []
        if (item.text !== undefined && typeof item.text === "string")
            found.push(item.text)
        for (let i = 0; i < item.children.length; ++i)
            texts(item.children[i], found)
        return found
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

    function test_choicesAndTogglesAreStoredAtOnce() {
        const page = createTemporaryObject(settingsComponent, testCase)
        const sizePicker = part(page, "sizePicker")
        compare(sizePicker.count, 7)
        choose(sizePicker, 6)
        compare(sizePicker.currentText, "1 GB")
        compare(Number(preferences.defaultMinSizeMB), 1024)
        verify(TestFiles.settingsFileText().indexOf("defaultMinSizeMB=1024\n") >= 0,
               TestFiles.settingsFileText())

        const before = preferences.confirmBeforeDelete
        mouseClick(part(page, "confirmDeleteToggle"))
        compare(preferences.confirmBeforeDelete, !before)
        verify(TestFiles.settingsFileText().indexOf("confirmBeforeDelete=" + !before) >= 0)

        // A second view over the same store reads what the first wrote.
        const other = createTemporaryObject(settingsComponent, testCase)
        compare(part(other, "sizePicker").currentIndex, 6)
        compare(part(other, "confirmDeleteToggle").checked, !before)
    }

    function test_unmatchedStoredSizeShowsNoChoiceAndIsKept() {
        preferences.defaultMinSizeMB = 75.0
        const page = createTemporaryObject(settingsComponent, testCase)
        const sizePicker = part(page, "sizePicker")
        compare(sizePicker.currentIndex, -1)
        compare(sizePicker.displayText, "")
        mouseClick(part(page, "hiddenFilesToggle"))
        mouseClick(part(page, "binarySizesToggle"))
        compare(Number(preferences.defaultMinSizeMB), 75)
        verify(TestFiles.settingsFileText().indexOf("defaultMinSizeMB=75\n") >= 0,
               TestFiles.settingsFileText())
        wait(200)
        grabImage(page).save("settings-general-unmatched.png")
        choose(sizePicker, 2)
        compare(Number(preferences.defaultMinSizeMB), 50)
    }

    function test_shortcutsUseThisPlatformsKeys() {
        const page = createTemporaryObject(settingsComponent, testCase)
        mouseClick(findChild(page, "shortcutsTab"))
        compare(part(page, "settingsView").currentTab, 2)
        const rows = shortcutRows(page)
        compare(rows, [["Ctrl N", "New Scan"], ["Ctrl O", "Browse for Folder"], ["Ctrl .", "Stop Scan"],
                       ["Ctrl F", "Search Files"], ["Ctrl A", "Select All"], ["Ctrl Shift A", "Deselect All"],
                       ["Ctrl Backspace", "Move to Trash"], ["Ctrl Shift G", "Reveal in File Manager"],
                       ["Space", "Quick Look"]])
        wait(200)
        grabImage(page).save("settings-shortcuts.png")
    }

    function test_aboutNamesThisPlatform() {
        const page = createTemporaryObject(settingsComponent, testCase)
        mouseClick(findChild(page, "aboutTab"))
        compare(part(page, "settingsView").currentTab, 3)
        const shown = texts(page)
        verify(shown.indexOf("Version 1.0") >= 0)
        verify(shown.indexOf("A powerful disk space analyzer for Linux. Find and clean up large files, installers, and archives to free up storage space.") >= 0)
        wait(200)
        grabImage(page).save("settings-about.png")
        mouseClick(findChild(page, "generalTab"))
        compare(part(page, "settingsView").currentTab, 0)
    }

    function test_windowIsFixedSizeAndWithdrawsTheRequestOnClose() {
        const vm = RavelinthViewModel
        vm.showSettings = true
        const window = createTemporaryObject(settingsWindowComponent, null)
        const view = () => findChild(window.contentItem, "settingsLoader").item
        compare(window.width, 480)
        compare(window.height, 430)
        compare(view(), null)
        window.show()
        tryVerify(() => view() !== null)
        compare(view().currentTab, 0)
        window.close()
        verify(!vm.showSettings)
        tryVerify(() => view() === null)
    }
}
