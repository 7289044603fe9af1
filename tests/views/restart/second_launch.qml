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
    readonly property Preferences prefs: RavelinthViewModel.preferences
    function part(view, name) {
        return findChild(view, name)
    }

    function test_preferencesSurvivedTheRestart() {
        const file = TestFiles.settingsFileText()
        verify(file.indexOf("defaultMinSizeMB=1024\n") >= 0, file)
        verify(file.indexOf("hasSeenOnboarding=true\n") >= 0, file)
        verify(prefs.hasSeenOnboarding)
        const view = createTemporaryObject(settingsComponent, testCase)
        compare(part(view, "sizePicker").currentText, "1 GB")
        compare([part(view, "hiddenFilesToggle").checked, part(view, "systemDirectoriesToggle").checked,
                 part(view, "binarySizesToggle").checked, part(view, "confirmDeleteToggle").checked],
                [true, false, true, false])
    }
}
