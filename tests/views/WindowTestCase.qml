import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// A test case over the whole main window: makes it, finds its parts (popups and dialogs too)
// and puts the shared root back after each test.
TestCase {
    id: testCase
    when: windowShown

    // Every notification a command posts.
    readonly property SignalSpy posted: SignalSpy {
        target: AppContext.notifications
        signalName: "posted"
    }

    function findChild(item, name) {
        if (!item)
            return null
        if (item.objectName === name)
            return item
        // `data` also holds what is not drawn in place: popups, dialogs, other windows.
        const children = item.data || item.children || []
        for (let i = 0; i < children.length; ++i) {
            const found = findChild(children[i], name)
            if (found)
                return found
        }
        if (item.contentItem && item.contentItem !== item) {
            const found = findChild(item.contentItem, name)
            if (found)
                return found
        }
        return null
    }

    readonly property var vm: RavelinthViewModel

    readonly property Component mainComponent: Component {
        Main {}
    }
    RootReset {
        id: rootReset
    }
    function initTestCase() {
        rootReset.reset(testCase)
    }
    function cleanup() {
        rootReset.reset(testCase)
    }

    // The window's parts, by name.
    function content(window) {
        return findChild(window.contentItem, "content")
    }
    function scannerPart(window, name) {
        return findChild(findChild(window.contentItem, "scannerView"), name)
    }

    function openWindow() {
        const window = createTemporaryObject(mainComponent, null)
        verify(window)
        content(window).showOnboarding = false
        window.requestActivate()
        tryVerify(() => window.active, 5000)
        waitForRendering(window.contentItem)
        return window
    }
}
