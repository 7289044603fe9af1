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
            property alias view: view
            width: 450
            height: 350
            color: Theme.windowBackground
            SettingsView {
                id: view
                anchors.fill: parent
            }
        }
    }
    Component {
        id: preferencesComponent
        Preferences {}
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
        const view = page.view
        compare(view.sizePicker.count, 7)
        choose(view.sizePicker, 6)
        compare(view.sizePicker.currentText, "1 GB")
        compare(Number(view.preferences.defaultMinSizeMB), 1024)
        verify(TestFiles.settingsFileText().indexOf("defaultMinSizeMB=1024\n") >= 0,
               TestFiles.settingsFileText())

        const before = view.preferences.confirmBeforeDelete
        mouseClick(view.confirmDeleteToggle)
        compare(view.preferences.confirmBeforeDelete, !before)
        verify(TestFiles.settingsFileText().indexOf("confirmBeforeDelete=" + !before) >= 0)

        // A second view over the same store reads what the first wrote.
        const other = createTemporaryObject(settingsComponent, testCase)
        compare(other.view.sizePicker.currentIndex, 6)
        compare(other.view.confirmDeleteToggle.checked, !before)
    }

    function test_unmatchedStoredSizeShowsNoChoiceAndIsKept() {
        const elsewhere = createTemporaryObject(preferencesComponent, testCase)
        elsewhere.defaultMinSizeMB = 75.0
        const page = createTemporaryObject(settingsComponent, testCase)
        const view = page.view
        compare(view.sizePicker.currentIndex, -1)
        compare(view.sizePicker.displayText, "")
        mouseClick(view.hiddenFilesToggle)
        mouseClick(view.binarySizesToggle)
        compare(Number(elsewhere.defaultMinSizeMB), 75)
        wait(200)
        grabImage(page).save("settings-general-unmatched.png")
        choose(view.sizePicker, 2)
        compare(Number(elsewhere.defaultMinSizeMB), 50)
    }

    function test_shortcutsUseThisPlatformsKeys() {
        const page = createTemporaryObject(settingsComponent, testCase)
        mouseClick(findChild(page, "shortcutsTab"))
        compare(page.view.currentTab, 1)
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
        compare(page.view.currentTab, 2)
        const shown = texts(page)
        verify(shown.indexOf("Version 1.0") >= 0)
        verify(shown.indexOf("A powerful disk space analyzer for Linux. Find and clean up large files, installers, and archives to free up storage space.") >= 0)
        wait(200)
        grabImage(page).save("settings-about.png")
        mouseClick(findChild(page, "generalTab"))
        compare(page.view.currentTab, 0)
    }

    Component {
        id: viewModelComponent
        RavelinthViewModel {}
    }

    function test_windowIsFixedSizeAndWithdrawsTheRequestOnClose() {
        const vm = createTemporaryObject(viewModelComponent, testCase)
        vm.showSettings = true
        const window = createTemporaryObject(Qt.createComponent("qrc:/Ravelinth/SettingsWindow.qml"), null,
                                             { viewModel: vm })
        compare(window.width, 450)
        compare(window.height, 350)
        compare(window.view, null)
        window.show()
        tryVerify(() => window.view !== null)
        compare(window.view.currentTab, 0)
        window.close()
        verify(!vm.showSettings)
        tryVerify(() => window.view === null)
    }
}
