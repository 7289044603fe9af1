import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// A test case over the whole main window: makes it, finds its parts (popups and dialogs too)
// and puts the shared root back after each test.
ViewTestCase {
    id: testCase

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

    readonly property Component mainComponent: Component {
        Main {}
    }
    readonly property Component settingsWindowComponent: Component {
        SettingsWindow {}
    }

    // The window's parts, by name; `part` fails the test when there is none.
    function content(window) {
        return findChild(window.contentItem, "content")
    }
    function scannerPart(window, name) {
        return findChild(findChild(window.contentItem, "scannerView"), name)
    }
    function part(window, name) {
        const found = findChild(window.contentItem.parent, name)
        verify(found, "no " + name)
        return found
    }

    // The region of the window an item is in, by the names of the items around it.
    function regionOf(item) {
        for (let it = item; it; it = it.parent) {
            const name = String(it.objectName)
            if (["toolbar", "sidebar", "helpButton", "scannerView", "fileList", "dashboard"].includes(name))
                return name
            if (name.startsWith("tab_"))
                return "tabs"
        }
        return "elsewhere"
    }
    // Every notification posted since the last look was this one command, with `object` if given.
    function expectPosted(name, object) {
        compare(posted.count, 1, name + ": " + JSON.stringify(posted.signalArguments))
        compare(posted.signalArguments[0][0], name)
        if (object !== undefined)
            compare(posted.signalArguments[0][1], object)
        posted.clear()
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

    // The settings window as the root's request opens it, over `owner` when one is given.
    function openSettings(owner) {
        const window = createTemporaryObject(settingsWindowComponent, null,
                                             owner ? { transientParent: owner } : {})
        vm.showSettings = true
        window.show()
        window.requestActivate()
        tryVerify(() => window.active, 5000)
        tryVerify(() => settingsView(window) !== null)
        waitForRendering(window.contentItem)
        return window
    }
    function settingsView(window) {
        const loader = findChild(window.contentItem, "settingsLoader")
        return loader ? loader.item : null
    }
}
