import QtQuick
import QtTest
import Ravelinth
import RavelinthTest

// Badges read at 4.5:1 (WCAG AA for normal text) in every state they are drawn in: the sidebar's
// count capsules selected or not, and the table's category and status pills on plain and selected
// rows. The colours are read from the drawn items, never asked of the rule that chose them.
ViewTestCase {
    id: testCase
    name: "Legibility"
    visible: true
    width: 1000
    height: 600

    // The WCAG 2 relative luminance and contrast ratio, written out here on purpose.
    function channel(v) {
        return v <= 0.04045 ? v / 12.92 : Math.pow((v + 0.055) / 1.055, 2.4)
    }
    function luminance(c) {
        return 0.2126 * channel(c.r) + 0.7152 * channel(c.g) + 0.0722 * channel(c.b)
    }
    function ratio(a, b) {
        const hi = Math.max(luminance(a), luminance(b))
        const lo = Math.min(luminance(a), luminance(b))
        return (hi + 0.05) / (lo + 0.05)
    }
    // `c` over an opaque `under`, as the screen shows it.
    function over(c, under) {
        return Qt.rgba(c.r * c.a + under.r * (1 - c.a), c.g * c.a + under.g * (1 - c.a),
                       c.b * c.a + under.b * (1 - c.a), 1)
    }
    function expectReadable(text, fill, under, what) {
        const r = ratio(over(text, over(fill, under)), over(fill, under))
        verify(r >= 4.5, what + ": " + r.toFixed(2) + ":1 (" + text + " on " + fill + ")")
    }

    Component {
        id: sidebarComponent
        SidebarView {
            width: 240
            height: 580
        }
    }
    Component {
        id: categoryBadgeComponent
        CategoryBadge {
            categoryName: "Documents"
        }
    }
    Component {
        id: safeBadgeComponent
        SafeToDeleteBadge {}
    }
    Component {
        id: statusBadgeComponent
        StatusBadge {}
    }
    Component {
        id: listComponent
        FileListView {
            width: testCase.width
            height: testCase.height
        }
    }

    function test_aFormulaThatAgreesWithHandWorkedValues() {
        // Worked by hand from the WCAG definitions, to two decimals.
        const cases = [["#000000", "#FFFFFF", 21.00], ["#FFFFFF", "#007AFF", 4.02],
                       ["#767676", "#FFFFFF", 4.54], ["#777777", "#FFFFFF", 4.48],
                       ["#FFFFFF", "#FFFFFF", 1.00]]
        for (const [a, b, expected] of cases)
            compare(Math.round(ratio(Qt.color(a), Qt.color(b)) * 100) / 100, expected, a + " on " + b)
    }

    // Every category's capsule and "All Files", selected and not, with a count in it.
    function test_sidebarCountBadges() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const repeater = findChild(sidebar, "categoryRows")
        const rows = [findChild(sidebar, "allFilesRow")]
        for (let i = 0; i < repeater.count; ++i)
            rows.push(repeater.itemAt(i))
        verify(rows.length >= 9)
        for (const row of rows) {
            row.count = 1234
            for (const selected of [false, true]) {
                row.isSelected = selected
                const badge = findChild(row, "badge")
                verify(badge.visible)
                expectReadable(findChild(badge, "badgeText").color, badge.color,
                               Theme.sidebarBackground, row.title + (selected ? " selected" : ""))
            }
        }
    }

    // The pills of the table on a plain row and on a selected (accent) row.
    function test_tableBadgesOnPlainAndSelectedRows() {
        const sidebar = createTemporaryObject(sidebarComponent, testCase)
        const repeater = findChild(sidebar, "categoryRows")
        for (const onSelectedRow of [false, true]) {
            const row = onSelectedRow ? Theme.accent : Theme.textBackground
            const state = onSelectedRow ? " on a selected row" : ""
            for (let i = 0; i < repeater.count; ++i) {
                const badge = createTemporaryObject(categoryBadgeComponent, testCase, {
                    categoryColor: repeater.itemAt(i).tint, onSelectedRow: onSelectedRow })
                expectReadable(findChild(badge, "badgeText").color, badge.color, row,
                               repeater.itemAt(i).title + state)
            }
            for (const isSafe of [false, true]) {
                const badge = createTemporaryObject(safeBadgeComponent, testCase,
                                                    { isSafe: isSafe, onSelectedRow: onSelectedRow })
                expectReadable(findChild(badge, "badgeText").color, badge.color, row,
                               (isSafe ? "Safe" : "Review") + state)
                // The pill itself stands out from a selected row (3:1 for a shape).
                if (onSelectedRow)
                    verify(ratio(over(badge.color, row), row) >= 3)
            }
        }
        for (const percentage of [10, 75, 95]) {
            const status = createTemporaryObject(statusBadgeComponent, testCase,
                                                 { percentage: percentage })
            const pill = findChild(status, "badge")
            expectReadable(findChild(pill, "badgeText").color, pill.color,
                           over(Theme.withOpacity(status.color, 0.05), Theme.textBackground),
                           status.text)
        }
    }

    // In the real table: the selected row's pills switch to their selected look.
    function test_selectedRowKeepsItsBadges() {
        const view = createTemporaryObject(listComponent, testCase)
        scanPath(TestFiles.sparseTree({ "report.pdf": 300 * mib, "clip.mov": 200 * mib }), 2)
        const table = findChild(view, "fileTable")
        tryVerify(() => table.itemAtCell(3, 0) !== null)
        mouseClick(table.itemAtCell(1, 0))
        tryVerify(() => table.activeFocus)
        for (const [column, name] of [[3, "categoryBadge"], [5, "safeBadge"]]) {
            const badge = findChild(table.itemAtCell(column, 0), name)
            verify(badge.onSelectedRow, name)
            expectReadable(findChild(badge, "badgeText").color, badge.color, Theme.accent, name)
            verify(!findChild(table.itemAtCell(column, 1), name).onSelectedRow, name + " row 1")
        }
    }
}
