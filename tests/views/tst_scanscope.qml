import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// What scans leave out, set in the settings; what a scan could not cover, told under the scanner;
// and data with several names, counted once and marked in the list.
ViewTestCase {
    id: testCase
    name: "ScanScope"
    visible: true
    width: 1000
    height: 480

    Component {
        id: settingsComponent
        SettingsView {
            width: 480
            height: 430
        }
    }
    Component {
        id: scannerComponent
        ScannerView {
            x: 16
            y: 16
            width: 968
        }
    }
    Component {
        id: listComponent
        FileListView {
            width: testCase.width
            height: testCase.height
        }
    }

    readonly property Preferences preferences: vm.preferences
    function clearExclusions() {
        while (preferences.excludedFolders.length > 0)
            preferences.removeExcludedFolder(0)
        while (preferences.excludedPatterns.length > 0)
            preferences.removeExcludedPattern(0)
    }
    function init() {
        clearExclusions()
    }
    function cleanup() {
        clearExclusions()
        resetRoot()
    }

    // The text as pasted, then Return as typed: the test keyboard knows no "*" or "~".
    function typeInto(field, text) {
        field.forceActiveFocus()
        field.text = text
        keyClick(Qt.Key_Return)
    }

    function test_settingsAddAndRemoveFoldersAndPatterns() {
        const page = createTemporaryObject(settingsComponent, testCase)
        mouseClick(findChild(page, "exclusionsTab"))
        compare(page.currentTab, 1)
        const folderRow = findChild(page, "folderRow")
        const patternRow = findChild(page, "patternRow")

        typeInto(patternRow.field, "node_modules")
        typeInto(patternRow.field, "*.vmdk")
        compare(preferences.excludedPatterns, ["node_modules", "*.vmdk"])
        compare(patternRow.field.text, "")
        // The same again, or a path in the names' field, is refused with a reason.
        typeInto(patternRow.field, "node_modules")
        compare(patternRow.problem, "Already in the list")
        typeInto(patternRow.field, "/srv/data")
        compare(patternRow.problem, "A path goes in the folder list above")
        compare(patternRow.field.Accessible.description, patternRow.problem)

        typeInto(folderRow.field, "relative/folder")
        compare(folderRow.problem, "Type a full path, starting with / or ~")
        typeInto(folderRow.field, "/srv/data/")
        typeInto(folderRow.field, "~/Videos")
        compare(preferences.excludedFolders.length, 2)
        compare(preferences.excludedFolders[0], "/srv/data")
        verify(preferences.excludedFolders[1].endsWith("/Videos"))
        verify(preferences.excludedFolders[1].startsWith("/"))
        compare(preferences.excludedPatterns.length, 2)

        const remove = findChild(page, "remove_*.vmdk")
        verify(remove)
        compare(remove.Accessible.name, "Remove *.vmdk")
        mouseClick(remove)
        compare(preferences.excludedPatterns, ["node_modules"])
        mouseClick(findChild(page, "remove_/srv/data"))
        compare(preferences.excludedFolders.length, 1)
    }

    // Each switch that sets what a scan covers writes its setting, and follows it when the setting
    // changes elsewhere.
    function test_switchesFollowTheirSettings() {
        for (const [component, name, owner, key] of [
                 [settingsComponent, "networkDrivesToggle", preferences, "scanNetworkDrives"],
                 [settingsComponent, "oneFileSystemToggle", preferences, "stayOnOneFileSystem"],
                 [scannerComponent, "hiddenFilesBox", vm.scan, "includeHiddenFiles"]]) {
            const box = findChild(createTemporaryObject(component, testCase), name)
            verify(!box.checked && !owner[key], name)
            mouseClick(box)
            verify(owner[key], name + " writes " + key)
            owner[key] = false
            verify(!box.checked, name + " follows " + key)
        }
    }

    function test_whatAScanCouldNotCoverIsToldAndListed() {
        const folder = makeFolder([{ path: "big.bin", size: 3e6 }])
        verify(folder.mirror("again"))
        preferences.addExclusion("*.skip")
        folder.file("left-out.skip", 3e6)
        const page = createTemporaryObject(scannerComponent, testCase)
        const gaps = findChild(page, "scanGaps")
        const model = RavelinthViewModel.scan
        model.minFileSizeMB = 1
        model.path = folder.root
        model.start()
        tryCompare(model.state, "phase", ScanPhase.Completed, 10000)
        // Listed once, whatever sees it twice; the excluded name not at all.
        compare(RavelinthViewModel.fileList.fileCount, 1)
        verify(gaps.visible)
        const button = findChild(gaps, "skippedMountsButton")
        compare(button.Accessible.name, "1 drive was not entered")
        verify(!findChild(gaps, "unreadableFoldersButton").visible)
        mouseClick(button)
        const list = findChild(gaps, "scanGapsList")
        tryCompare(list, "opened", true)
        compare(list.lines.length, 1)
        verify(list.lines[0].startsWith(folder.root + "/again ("), list.lines[0])
        verify(list.lines[0].endsWith("): already scanned through another path"), list.lines[0])
        keyClick(Qt.Key_Escape)
        tryCompare(list, "opened", false)
        // A new scan starts without the old scan's gaps.
        model.start()
        verify(!gaps.visible)
        tryCompare(model.state, "phase", ScanPhase.Completed, 10000)
    }

    function test_dataWithOtherNamesCountsOnceAndIsMarked() {
        const folder = makeFolder([{ path: "trip/clip.mov", size: 4e6 },
                                   { path: "again/notes.txt", size: 10 }])
        verify(folder.link("trip/clip.mov", "again/clip-copy.mov"))
        folder.file("alone.iso", 2e6)
        const view = createTemporaryObject(listComponent, testCase)
        scanPath(folder.root, 3)
        // Both names are listed; their data counts once.
        compare(vm.scan.state.totalSize, 6e6)
        const table = findChild(view, "fileTable")
        tryVerify(() => table.itemAtCell(0, 2) !== null)
        let linked = 0
        for (let row = 0; row < 3; ++row) {
            table.positionViewAtRow(row, TableView.Contain)
            table.forceLayout()
            const badge = findChild(table.itemAtCell(5, row), "linkedBadge")
            verify(badge, "row " + row)
            if (badge.visible) {
                ++linked
                verify(badge.explanation.indexOf("frees no space") >= 0)
            }
        }
        compare(linked, 2)
    }
}
