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
        id: preferencesComponent
        Preferences {}
    }

    function test_preferencesSurvivedTheRestart() {
        const file = TestFiles.settingsFileText()
        verify(file.indexOf("defaultMinSizeMB=1024\n") >= 0, file)
        verify(file.indexOf("hasSeenOnboarding=true\n") >= 0, file)
        const prefs = createTemporaryObject(preferencesComponent, testCase)
        verify(prefs.hasSeenOnboarding)
        const view = createTemporaryObject(settingsComponent, testCase)
        compare(view.sizePicker.currentText, "1 GB")
        compare([view.hiddenFilesToggle.checked, view.systemDirectoriesToggle.checked,
                 view.binarySizesToggle.checked, view.confirmDeleteToggle.checked],
                [true, false, true, false])
    }
}
