import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// The second of two runs over one settings file: a new process reads what the first one chose.
TestCase {
    id: testCase
    name: "SecondLaunch"

    Component {
        id: settingsComponent
        SettingsView {
            width: 450
            height: 350
        }
    }
    Component {
        id: scannerComponent
        ScannerView {
            width: 800
        }
    }
    readonly property Preferences prefs: RavelinthViewModel.preferences

    function test_preferencesSurvivedTheRestart() {
        const file = TestFiles.settingsFileText()
        verify(file.indexOf("defaultMinSizeMB=1024\n") >= 0, file)
        verify(file.indexOf("hasSeenOnboarding=true\n") >= 0, file)
        verify(prefs.hasSeenOnboarding)
        const view = createTemporaryObject(settingsComponent, testCase)
        compare(findChild(view, "sizePicker").currentText, "1 GB")
        compare([findChild(view, "hiddenFilesToggle").checked, findChild(view, "systemDirectoriesToggle").checked,
                 findChild(view, "binarySizesToggle").checked, findChild(view, "confirmDeleteToggle").checked],
                [true, false, true, false])
    }

    // The scanner starts from the saved choices, and sizes read in binary units.
    function test_theScannerStartsFromThem() {
        compare(RavelinthViewModel.scan.minFileSizeMB, 1024)
        verify(RavelinthViewModel.scan.includeHiddenFiles)
        const view = createTemporaryObject(scannerComponent, testCase)
        compare(findChild(view, "minSizeField").text, "1,024")
        verify(findChild(view, "hiddenFilesBox").checked)
        compare(TextFormat.byteCount(1536, TextFormat.binaryUnits), "2 KiB")
    }
}
