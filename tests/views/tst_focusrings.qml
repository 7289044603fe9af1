import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// Every control the Tab key reaches shows that it has the focus: walking the whole main window
// and the settings window by Tab, each stop draws an outline (a border of at least 2). In the main
// window Tab goes through the regions in the order they read: toolbar, sidebar, header, content.
WindowTestCase {
    id: testCase
    name: "FocusRings"

    // An outline drawn by the item, its background or a child of it.
    function outlined(item, depth) {
        if (!item || !item.visible)
            return false
        if (item.border !== undefined && item.border.width >= 2)
            return true
        if (item.background && item.background.border && item.background.border.width >= 2)
            return true
        if (depth === 0)
            return false
        for (let i = 0; i < item.children.length; ++i) {
            if (outlined(item.children[i], depth - 1))
                return true
        }
        return false
    }

    // Tab from the first stop round to where it started, checking each stop on the way.
    function walk(window, first) {
        first.forceActiveFocus(Qt.TabFocusReason)
        const stops = [], regions = []
        for (let i = 0; i < 80; ++i) {
            const item = window.activeFocusItem
            verify(item !== null)
            const name = item.objectName || item.text || item.title || String(item)
            // A field inside a box of its own lets the box show it; the table, whose children
            // scroll, has its outline beside it.
            const box = item.parent && item.parent.parent
            const siblings = item.parent ? Array.from(item.parent.children) : []
            verify(outlined(item, 3) || (box && box.border !== undefined && box.border.width >= 2)
                   || siblings.some(s => s !== item && s.visible && s.border !== undefined
                                    && s.border.width >= 2),
                   "no focus outline on " + name)
            stops.push(name)
            const region = regionOf(item)
            if (regions[regions.length - 1] !== region)
                regions.push(region)
            keyClick(Qt.Key_Tab)
            if (window.activeFocusItem === first)
                return { stops: stops, regions: regions }
        }
        fail("Tab never came back round: " + stops.join(", "))
    }

    function test_everyStopInTheMainWindowShowsFocusInReadingOrder() {
        // Files listed, so the list's toolbar, the table and the sidebar's category rows count too.
        const window = openWindow()
        scanPath(TestFiles.sparseTree({ "a.iso": 300 * mib, "b.pdf": 200 * mib }), 2)
        const walked = walk(window, part(window, "toolbarScanButton"))
        const heard = { tabs: "header", helpButton: "header", scannerView: "content",
                        fileList: "content", dashboard: "content" }
        compare(walked.regions.map(region => heard[region] || region).filter(
                    (region, i, all) => i === 0 || all[i - 1] !== region),
                ["toolbar", "sidebar", "header", "content"])
        const stops = walked.stops
        verify(stops.length >= 15, stops.join(", "))
        for (const name of ["fileTable", "sortPicker", "hiddenFilesBox", "allFilesRow"])
            verify(stops.indexOf(name) >= 0, name + " is a stop: " + stops.join(", "))
    }

    function test_everyStopInTheSettingsWindowShowsFocus() {
        const window = openSettings()
        const stops = walk(window, findChild(settingsView(window), "generalTab")).stops
        compare(stops.length, 4 + 1 + 6, stops.join(", "))
    }
}
