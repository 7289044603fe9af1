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
    function part(view, name) {
        return findChild(view, name)
    }

    function test_1_emptyStoreShowsDefaults() {
        compare(TestFiles.settingsFileText(), "")
        verify(!prefs.hasSeenOnboarding)
        const view = createTemporaryObject(settingsComponent, testCase)
        compare(part(view, "sizePicker").currentText, "100 MB")
        compare(part(view, "sizePicker").currentIndex, 3)
        compare([part(view, "hiddenFilesToggle").checked, part(view, "systemDirectoriesToggle").checked,
                 part(view, "binarySizesToggle").checked, part(view, "confirmDeleteToggle").checked],
                [false, true, false, true])
        wait(200)
        grabImage(view).save("settings-general.png")
    }

    function test_2_changeEverything() {
        const view = createTemporaryObject(settingsComponent, testCase)
        mouseClick(part(view, "sizePicker"))
        tryVerify(() => part(view, "sizePicker").popup.opened)
        const list = part(view, "sizePicker").popup.contentItem
        tryVerify(() => list.itemAtIndex(6) !== null)
        mouseClick(list.itemAtIndex(6))
        for (const toggle of [part(view, "hiddenFilesToggle"), part(view, "systemDirectoriesToggle"),
                              part(view, "binarySizesToggle"), part(view, "confirmDeleteToggle")])
            mouseClick(toggle)

        const onboarding = createTemporaryObject(onboardingComponent, testCase)
        for (let i = 0; i < 5; ++i)
            mouseClick(part(onboarding, "nextButton"))
        verify(!onboarding.isPresented)
    }
}
