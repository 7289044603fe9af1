pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import Qt.labs.qmlmodels

// The rows of the file list: six columns of cells, multiple selection by mouse and keys, a
// context menu per row and the double-click. The rows and their order come whole from the file
// list model; the table never reorders them itself. The column widths live here, and the header
// changes them through resizeColumn().
Item {
    id: root
    readonly property TableView tableView: table

    // Keyboard and Shift-click state: the row the keys move from and the end a range grows from.
    property int currentRow: -1
    property int anchorRow: -1
    // The row whose context menu is open, outlined while it is.
    property int contextRow: -1
    // The keys move the focus onto the current row's own item, so that a screen reader hears
    // every move; the table still handles the keys, which reach it from there.
    readonly property bool hasFocus: table.activeFocus
                                     || (Window.activeFocusItem !== null
                                         && Window.activeFocusItem.parent === table.contentItem)

    readonly property int columnCount: 6
    // The icon column is fixed; the others have a floor and no ceiling.
    readonly property var minimumWidths: [32, 200, 80, 100, 80, 80]
    readonly property var maximumWidths: [32, Infinity, Infinity, Infinity, Infinity, Infinity]
    // "Modified" starts a little wider than the others so "50 minutes ago" fits this face.
    property var columnWidths: [32, 300, 100, 120, 115, 150]
    readonly property int rowHeight: 36

    function widthOf(column) {
        if (column !== 1)
            return columnWidths[column]
        // The name takes whatever room the other columns leave.
        let others = 0
        for (let c = 0; c < columnWidths.length; ++c) {
            if (c !== 1)
                others += columnWidths[c]
        }
        return Math.max(columnWidths[1], table.width - others)
    }

    function resizeColumn(column, width) {
        const widths = columnWidths.slice()
        const target = Math.min(maximumWidths[column],
                                Math.max(minimumWidths[column], Math.round(width)))
        if (column === 1) {
            // The name fills the room the others leave, so its edge is the border with "Size":
            // dragging it moves that border, "Size" giving or taking the difference while it can.
            // Without that, narrowing a name that fills the row would do nothing at all.
            const delta = target - widthOf(1)
            widths[2] = Math.min(maximumWidths[2], Math.max(minimumWidths[2], widths[2] - delta))
        }
        widths[column] = target
        columnWidths = widths
    }
    onColumnWidthsChanged: table.forceLayout()

    Connections {
        target: RavelinthViewModel.fileList
        // A new list: the rows the keys and Shift-clicks counted from are gone.
        function onModelReset() {
            root.currentRow = -1
            root.anchorRow = -1
        }
        function onRowsReordered() {
            root.currentRow = -1
            root.anchorRow = -1
        }
    }

    // --- selection by mouse and keys ---

    function pressRow(row, modifiers) {
        const selection = RavelinthViewModel.selection
        table.forceActiveFocus()
        const extend = (modifiers & Qt.ShiftModifier) && anchorRow >= 0
        const toggle = modifiers & Qt.ControlModifier
        if (extend) {
            if (!toggle)
                selection.clear()
            selection.selectRange(anchorRow, row)
        } else if (toggle) {
            selection.toggle(row)
            anchorRow = row
        } else {
            selection.selectOnly(row)
            anchorRow = row
        }
        currentRow = row
    }

    function moveCurrent(row, extend) {
        const selection = RavelinthViewModel.selection
        const count = table.rows
        if (count === 0)
            return
        row = Math.max(0, Math.min(count - 1, row))
        if (extend && anchorRow >= 0) {
            selection.clear()
            selection.selectRange(anchorRow, row)
        } else {
            selection.selectOnly(row)
            anchorRow = row
        }
        currentRow = row
        table.positionViewAtRow(row, TableView.Contain)
        focusCurrentRow()
    }

    function focusCurrentRow() {
        const item = currentRow >= 0 ? table.itemAtCell(1, currentRow) : null
        if (item !== null)
            item.forceActiveFocus(Qt.OtherFocusReason)
    }

    function handleKey(event) {
        const operations = RavelinthViewModel.operations
        const shift = event.modifiers & Qt.ShiftModifier
        const page = Math.max(1, Math.floor(table.height / rowHeight) - 1)
        switch (event.key) {
        case Qt.Key_Up:
            moveCurrent(currentRow < 0 ? 0 : currentRow - 1, shift)
            break
        case Qt.Key_Down:
            moveCurrent(currentRow + 1, shift)
            break
        case Qt.Key_PageUp:
            moveCurrent(currentRow - page, shift)
            break
        case Qt.Key_PageDown:
            moveCurrent(currentRow + page, shift)
            break
        case Qt.Key_Home:
            moveCurrent(0, shift)
            break
        case Qt.Key_End:
            moveCurrent(table.rows - 1, shift)
            break
        case Qt.Key_Delete:
            operations.requestMoveSelectedToTrash()
            break
        case Qt.Key_Backspace:
            // The window's shortcut takes Ctrl+Backspace first; this serves the table alone.
            if (!(event.modifiers & Qt.ControlModifier))
                return
            operations.requestMoveSelectedToTrash()
            break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            operations.revealSelected()
            break
        case Qt.Key_Menu:
            openContextMenuForKeys()
            break
        case Qt.Key_F10:
            if (!shift)
                return
            openContextMenuForKeys()
            break
        case Qt.Key_Space:
            if (event.modifiers !== Qt.NoModifier || currentRow < 0)
                return
            quickPreview.show(currentRow)
            break
        default:
            return
        }
        event.accepted = true
    }

    // --- the context menu and the double-click ---

    // `at` is the click's position in this item.
    function openContextMenu(row, at) {
        contextMenu.file = RavelinthViewModel.fileList.fileIdAt(row)
        contextMenu.selection = RavelinthViewModel.selection.clickedSet(row)
        contextRow = row
        contextMenu.popup(at.x, at.y)
    }

    // The Menu key and Shift+F10: the menu of the focused row, opened on that row; with nothing
    // current, on the first selected row.
    function openContextMenuForKeys() {
        let row = currentRow
        if (row < 0 || row >= table.rows)
            row = RavelinthViewModel.selection.count > 0 ? firstSelectedRow() : -1
        if (row < 0)
            return
        table.positionViewAtRow(row, TableView.Contain)
        const cell = table.itemAtCell(1, row)
        const at = cell !== null ? cell.mapToItem(root, 24, root.rowHeight / 2) : Qt.point(24, 0)
        openContextMenu(row, at)
    }

    function firstSelectedRow() {
        for (let r = 0; r < table.rows; ++r) {
            if (RavelinthViewModel.selection.isSelected(r))
                return r
        }
        return -1
    }

    function revealClicked(row) {
        const clicked = RavelinthViewModel.selection.clickedSet(row)
        if (clicked.length > 0)
            RavelinthViewModel.operations.reveal([clicked[0]])
    }

    QuickPreview {
        id: quickPreview
        objectName: "quickPreview"
    }

    FileContextMenu {
        id: contextMenu
        objectName: "fileContextMenu"
        onClosed: root.contextRow = -1
    }

    MinuteClock {
        id: clock
        running: root.visible && RavelinthViewModel.fileList.count > 0
    }

    TableView {
        id: table
        objectName: "fileTable"
        anchors.fill: parent
        clip: true
        focus: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        model: RavelinthViewModel.fileList
        columnWidthProvider: column => root.widthOf(column)
        rowHeightProvider: () => root.rowHeight
        onWidthChanged: forceLayout()
        Keys.onPressed: event => root.handleKey(event)
        Accessible.role: Accessible.Table
        Accessible.name: "Files"
        Accessible.description: RavelinthViewModel.fileList.count + " files"

        // Always shown when the rows overflow: with a million rows the bar is the map.
        ScrollBar.vertical: ScrollBar {
            policy: table.contentHeight > table.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
        }
        ScrollBar.horizontal: ScrollBar {
            policy: ScrollBar.AsNeeded
        }

        delegate: DelegateChooser {
            DelegateChoice {
                column: 0
                delegate: FileTableCell {
                    id: iconCell
                    table: root
                    required property string categoryIcon
                    required property color categoryColor
                    Accessible.name: model.categoryName ?? ""
                    FileIconView {
                        anchors.centerIn: parent
                        categoryIcon: iconCell.categoryIcon
                        categoryColor: iconCell.highlighted ? "white" : iconCell.categoryColor
                    }
                }
            }
            DelegateChoice {
                column: 1
                delegate: FileTableCell {
                    id: nameCell
                    table: root
                    required property string name
                    required property string folder
                    objectName: "fileRow"
                    // What a screen reader reads for the whole row, and where the keys' focus
                    // lands: the name cell stands for its row.
                    Accessible.role: Accessible.Row
                    Accessible.name: [name, model.sizeText, model.categoryName,
                                      TextFormat.relativeDate(model.modifiedMSecs),
                                      model.isSafeToDelete ? "Safe" : "Review"].join(", ")
                    Accessible.description: folder
                    Accessible.focusable: true
                    Accessible.focused: activeFocus
                    // Focus given from outside (a screen reader's own navigation) makes the row
                    // the one the keys move from.
                    onActiveFocusChanged: {
                        if (activeFocus && root.currentRow !== row) {
                            root.currentRow = row
                            root.anchorRow = row
                        }
                    }
                    FileNameCell {
                        x: 6
                        width: parent.width - 12
                        anchors.verticalCenter: parent.verticalCenter
                        name: nameCell.name
                        folder: nameCell.folder
                        textColor: nameCell.highlighted ? "white" : Theme.primaryText
                        secondaryColor: nameCell.highlighted ? Qt.rgba(1, 1, 1, 0.8)
                                                             : Theme.secondaryText
                    }
                }
            }
            DelegateChoice {
                column: 2
                delegate: FileTableCell {
                    id: sizeCell
                    table: root
                    required property string sizeText
                    Accessible.name: sizeText
                    FileSizeCell {
                        x: 6
                        width: parent.width - 12
                        anchors.verticalCenter: parent.verticalCenter
                        sizeText: sizeCell.sizeText
                        color: sizeCell.highlighted ? "white" : Theme.primaryText
                    }
                }
            }
            DelegateChoice {
                column: 3
                delegate: FileTableCell {
                    id: categoryCell
                    table: root
                    required property int category
                    required property string categoryName
                    required property color categoryColor
                    Accessible.name: categoryName
                    CategoryBadge {
                        objectName: "categoryBadge"
                        x: 6
                        anchors.verticalCenter: parent.verticalCenter
                        category: categoryCell.category
                        categoryName: categoryCell.categoryName
                        categoryColor: categoryCell.categoryColor
                        onSelectedRow: categoryCell.highlighted
                    }
                }
            }
            DelegateChoice {
                column: 4
                delegate: FileTableCell {
                    id: modifiedCell
                    table: root
                    required property real modifiedMSecs
                    Accessible.name: clock.tick >= 0 ? TextFormat.relativeDate(modifiedMSecs) : ""
                    Text {
                        objectName: "modifiedText"
                        x: 6
                        width: parent.width - 12
                        anchors.verticalCenter: parent.verticalCenter
                        // Read again on every tick of the clock, so "5 minutes ago" keeps true.
                        text: clock.tick >= 0 ? TextFormat.relativeDate(modifiedCell.modifiedMSecs)
                                              : ""
                        elide: Text.ElideRight
                        font.pixelSize: 12
                        color: modifiedCell.highlighted ? "white" : Theme.secondaryText
                    }
                }
            }
            DelegateChoice {
                column: 5
                delegate: FileTableCell {
                    id: statusCell
                    table: root
                    required property bool isSafeToDelete
                    required property bool isLinked
                    Accessible.name: (isSafeToDelete ? "Safe" : "Review") + (isLinked ? ", Linked" : "")
                    SafeToDeleteBadge {
                        id: safeBadge
                        objectName: "safeBadge"
                        x: 6
                        anchors.verticalCenter: parent.verticalCenter
                        isSafe: statusCell.isSafeToDelete
                        onSelectedRow: statusCell.highlighted
                    }
                    LinkedBadge {
                        objectName: "linkedBadge"
                        x: safeBadge.x + safeBadge.width + 4
                        anchors.verticalCenter: parent.verticalCenter
                        visible: statusCell.isLinked
                        onSelectedRow: statusCell.highlighted
                    }
                }
            }
        }
    }

    // Focus shows in the selection's colour; with nothing selected, the table outlines itself.
    FocusRing {
        objectName: "tableFocusRing"
        anchors.margins: 1
        radius: 2
        shown: root.hasFocus && RavelinthViewModel.selection.count === 0
    }
}
