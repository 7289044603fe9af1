import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// The first of two runs over one settings file: starts from nothing and changes every preference.
TestCase {
    id: testCase
    name: "FirstLaunch"
    when: windowShown
    visible: true
    width: 600
    height: 560

    Component {
        id: settingsComponent
        SettingsView {
            width: 450
            height: 350
        }
    }
    Component {
        id: onboardingComponent
        OnboardingView {
            width: 600
            height: 560
        }
    }
    readonly property Preferences prefs: RavelinthViewModel.preferences

    function test_1_emptyStoreShowsDefaults() {
        compare(TestFiles.settingsFileText(), "")
        verify(!prefs.hasSeenOnboarding)
        const view = createTemporaryObject(settingsComponent, testCase)
        compare(findChild(view, "sizePicker").currentText, "100 MB")
        compare(findChild(view, "sizePicker").currentIndex, 3)
        compare([findChild(view, "hiddenFilesToggle").checked, findChild(view, "systemDirectoriesToggle").checked,
                 findChild(view, "binarySizesToggle").checked, findChild(view, "confirmDeleteToggle").checked],
                [false, true, false, true])
    }

    function test_2_changeEverything() {
        const view = createTemporaryObject(settingsComponent, testCase)
        mouseClick(findChild(view, "sizePicker"))
        tryVerify(() => findChild(view, "sizePicker").popup.opened)
        const list = findChild(view, "sizePicker").popup.contentItem
        tryVerify(() => list.itemAtIndex(6) !== null)
        mouseClick(list.itemAtIndex(6))
        for (const toggle of [findChild(view, "hiddenFilesToggle"), findChild(view, "systemDirectoriesToggle"),
                              findChild(view, "binarySizesToggle"), findChild(view, "confirmDeleteToggle")])
            mouseClick(toggle)
        // Written at once, not only when the program ends.
        const file = TestFiles.settingsFileText()
        for (const line of ["defaultMinSizeMB=1024\n", "includeHiddenFiles=true\n", "confirmBeforeDelete=false\n"])
            verify(file.indexOf(line) >= 0, line + file)

        const onboarding = createTemporaryObject(onboardingComponent, testCase)
        for (let i = 0; i < 5; ++i)
            mouseClick(findChild(onboarding, "nextButton"))
        verify(!onboarding.isPresented)
    }
}
