import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// Reveal and Trash act on the selection: without one they are off, and look it.
TestCase {
    id: testCase
    name: "Toolbar"
    when: windowShown

    readonly property var vm: RavelinthViewModel
    Component {
        id: mainComponent
        Main {}
    }
    RootReset {
        id: rootReset
    }
    function cleanup() {
        rootReset.reset(testCase)
    }

    function toolbarButton(window, name) {
        return findChild(window.header, name)
    }

    function test_revealAndTrashNeedASelection() {
        const folder = TestFiles.sparseTree({ "a.iso": 300 * 1048576, "b.iso": 200 * 1048576 })
        vm.scan.path = folder
        vm.scan.minFileSizeMB = 1
        vm.scan.start()
        tryVerify(() => vm.scan.state.phase === ScanPhase.Completed && vm.fileList.count === 2, 10000)

        const window = createTemporaryObject(mainComponent, null)
        findChild(window.contentItem, "content").showOnboarding = false
        window.requestActivate()
        tryVerify(() => window.active, 5000)
        const buttons = ["toolbarRevealButton", "toolbarTrashButton"].map(
                  name => toolbarButton(window, name))
        const refresh = toolbarButton(window, "toolbarRefreshButton")

        const expectEnabled = (enabled, why) => {
            for (const button of buttons) {
                compare(button.enabled, enabled, button.text + " " + why)
                compare(button.opacity < 1, !enabled, button.text + " looks it " + why)
            }
            verify(refresh.enabled && refresh.opacity === 1, "Refresh never depends on it")
        }
        expectEnabled(false, "with nothing selected")
        // A click on the faded Trash moves nothing.
        mouseClick(buttons[1])
        wait(200)
        compare(vm.fileList.fileCount, 2)

        vm.selection.selectOnly(0)
        expectEnabled(true, "with one file selected")
        vm.selection.selectAll()
        expectEnabled(true, "with every file selected")
        vm.selection.clear()
        expectEnabled(false, "after the selection is cleared")
    }
}
