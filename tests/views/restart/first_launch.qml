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
    Component {
        id: preferencesComponent
        Preferences {}
    }

    function test_1_emptyStoreShowsDefaults() {
        compare(TestFiles.settingsFileText(), "")
        const prefs = createTemporaryObject(preferencesComponent, testCase)
        verify(!prefs.hasSeenOnboarding)
        const view = createTemporaryObject(settingsComponent, testCase)
        compare(view.sizePicker.currentText, "100 MB")
        compare(view.sizePicker.currentIndex, 3)
        compare([view.hiddenFilesToggle.checked, view.systemDirectoriesToggle.checked,
                 view.binarySizesToggle.checked, view.confirmDeleteToggle.checked],
                [false, true, false, true])
        wait(200)
        grabImage(view).save("settings-general.png")
    }

    function test_2_changeEverything() {
        const view = createTemporaryObject(settingsComponent, testCase)
        mouseClick(view.sizePicker)
        tryVerify(() => view.sizePicker.popup.opened)
        const list = view.sizePicker.popup.contentItem
        tryVerify(() => list.itemAtIndex(6) !== null)
        mouseClick(list.itemAtIndex(6))
        for (const toggle of [view.hiddenFilesToggle, view.systemDirectoriesToggle,
                              view.binarySizesToggle, view.confirmDeleteToggle])
            mouseClick(toggle)

        const onboarding = createTemporaryObject(onboardingComponent, testCase)
        for (let i = 0; i < 5; ++i)
            mouseClick(onboarding.nextButton)
        verify(!onboarding.isPresented)
    }
}
