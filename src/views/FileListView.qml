import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts
import Qt.labs.qmlmodels

// The found files: a toolbar, then either the empty state or a six-column table with multiple
// selection, header sorting and a context menu per row. The rows and their order come whole from
// the view model; the table never reorders them itself.
Item {
    id: root
    property RavelinthViewModel viewModel

    // The table's comparators, first one counting: [{key: "size"|"name"|"modifiedDate",
    // ascending}]. Starts on size, largest first.
    property var sortOrder: [{ key: "size", ascending: false }]

    // Keyboard and Shift-click state: the row the keys move from and the end a range grows from.
    property int currentRow: -1
    property int anchorRow: -1
    // The row whose context menu is open, outlined while it is.
    property int contextRow: -1

    readonly property alias table: table
    readonly property alias header: header
    readonly property alias contextMenu: contextMenu
    readonly property alias emptyState: emptyState

    readonly property var columnTitles: ["", "Name", "Size", "Category", "Modified", "Status"]
    readonly property var columnKeys: ["", "name", "size", "", "modifiedDate", ""]
    readonly property var minimumWidths: [32, 200, 80, 100, 80, 80]
    // "Modified" starts a little wider than the others so "50 minutes ago" fits this face.
    property var columnWidths: [32, 300, 100, 120, 115, 100]
    readonly property int rowHeight: 36

    // The comparator each sort option stands for, in SortOption order.
    readonly property var optionComparators: [
        { key: "size", ascending: false }, { key: "size", ascending: true },
        { key: "name", ascending: true }, { key: "name", ascending: false },
        { key: "modifiedDate", ascending: false }, { key: "modifiedDate", ascending: true }
    ]
    readonly property var activeComparator: viewModel ? optionComparators[viewModel.sortOption]
                                                      : optionComparators[0]

    // Bumped every minute so the "Modified" texts follow the clock.
    property int clockTick: 0

    // The sort option a comparator asks for, or -1 for a key that sorts nothing.
    function sortOptionFor(comparator) {
        for (let i = 0; i < optionComparators.length; ++i) {
            if (optionComparators[i].key === comparator.key
                    && optionComparators[i].ascending === comparator.ascending)
                return i
        }
        return -1
    }

    function applySortOrder() {
        if (!viewModel || sortOrder.length === 0)
            return
        const option = sortOptionFor(sortOrder[0])
        if (option >= 0)
            viewModel.sortOption = option
    }
    onSortOrderChanged: applySortOrder()

    // A click on a header: its column's comparator goes first, flipped when it already was.
    function headerClicked(column) {
        const key = columnKeys[column]
        if (key === "")
            return
        let order = sortOrder.slice()
        if (order.length > 0 && order[0].key === key) {
            order[0] = { key: key, ascending: !order[0].ascending }
        } else {
            order = order.filter(c => c.key !== key)
            order.unshift({ key: key, ascending: true })
        }
        sortOrder = order
    }

    Connections {
        target: root.viewModel
        // The picker changed the order: let the headers tell the truth and flip from there.
        function onSortOptionChanged() {
            const wanted = root.optionComparators[root.viewModel.sortOption]
            if (root.sortOrder.length > 0 && root.sortOrder[0].key === wanted.key
                    && root.sortOrder[0].ascending === wanted.ascending)
                return
            root.sortOrder = [wanted].concat(root.sortOrder.filter(c => c.key !== wanted.key))
        }
        function onDisplayedFilesChanged() {
            root.currentRow = -1
            root.anchorRow = -1
        }
    }

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
        widths[column] = Math.max(minimumWidths[column], Math.round(width))
        columnWidths = widths
    }
    onColumnWidthsChanged: table.forceLayout()

    // --- selection by mouse and keys ---

    function pressRow(row, modifiers) {
        table.forceActiveFocus()
        const extend = (modifiers & Qt.ShiftModifier) && anchorRow >= 0
        const toggle = modifiers & Qt.ControlModifier
        if (extend) {
            if (!toggle)
                viewModel.clearSelection()
            viewModel.selectRange(anchorRow, row)
        } else if (toggle) {
            viewModel.toggleSelected(row)
            anchorRow = row
        } else {
            viewModel.selectOnly(row)
            anchorRow = row
        }
        currentRow = row
    }

    function moveCurrent(row, extend) {
        const count = table.rows
        if (count === 0)
            return
        row = Math.max(0, Math.min(count - 1, row))
        if (extend && anchorRow >= 0) {
            viewModel.clearSelection()
            viewModel.selectRange(anchorRow, row)
        } else {
            viewModel.selectOnly(row)
            anchorRow = row
        }
        currentRow = row
        table.positionViewAtRow(row, TableView.Contain)
    }

    function handleKey(event) {
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
            viewModel.moveSelectedToTrash()
            break
        case Qt.Key_Backspace:
            if (!(event.modifiers & Qt.ControlModifier))
                return
            viewModel.moveSelectedToTrash()
            break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            viewModel.revealSelectedInFinder()
            break
        case Qt.Key_A:
            if (!(event.modifiers & Qt.ControlModifier))
                return
            viewModel.selectAll()
            break
        default:
            return
        }
        event.accepted = true
    }

    // --- the context menu and the double-click ---

    // `at` is the click's position in this view.
    function openContextMenu(row, at) {
        contextMenu.file = viewModel.fileIdAt(row)
        contextMenu.selection = viewModel.clickedSet(row)
        contextRow = row
        contextMenu.popup(at.x, at.y)
    }

    function revealClicked(row) {
        const clicked = viewModel.clickedSet(row)
        if (clicked.length > 0)
            fileActions.reveal([clicked[0]])
    }

    FileActions {
        id: fileActions
        viewModel: root.viewModel
    }

    FileContextMenu {
        id: contextMenu
        viewModel: root.viewModel
        onClosed: root.contextRow = -1
    }

    Timer {
        interval: 60000
        repeat: true
        running: root.visible && root.viewModel !== null && root.viewModel.displayedCount > 0
        onTriggered: root.clockTick += 1
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        FileListToolbar {
            id: toolbar
            Layout.fillWidth: true
            viewModel: root.viewModel
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: Theme.divider
        }

        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            EmptyStateView {
                id: emptyState
                anchors.fill: parent
                visible: !root.viewModel || root.viewModel.displayedCount === 0
                viewModel: root.viewModel
            }

            Rectangle {
                anchors.fill: parent
                visible: !emptyState.visible
                color: Theme.textBackground

                HorizontalHeaderView {
                    id: header
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.top: parent.top
                    syncView: table
                    clip: true
                    delegate: Rectangle {
                        id: headerCell
                        required property int column
                        readonly property string key: root.columnKeys[column]
                        readonly property bool sorted: key !== "" && root.activeComparator.key === key
                        implicitHeight: 26
                        implicitWidth: 40
                        color: headerTap.pressed ? Theme.withOpacity(Theme.gray, 0.15)
                                                 : Theme.textBackground
                        objectName: "header" + column

                        Row {
                            anchors.left: parent.left
                            anchors.leftMargin: 8
                            anchors.right: parent.right
                            anchors.rightMargin: 8
                            anchors.verticalCenter: parent.verticalCenter
                            spacing: 4
                            Text {
                                text: root.columnTitles[headerCell.column]
                                font.pixelSize: 12
                                font.weight: headerCell.sorted ? Font.DemiBold : Font.Normal
                                color: headerCell.sorted ? Theme.primaryText : Theme.secondaryText
                                elide: Text.ElideRight
                                anchors.verticalCenter: parent.verticalCenter
                            }
                            SymbolIcon {
                                visible: headerCell.sorted
                                symbol: root.activeComparator.ascending ? "chevron.up"
                                                                        : "chevron.down"
                                size: 14
                                color: Theme.secondaryText
                                anchors.verticalCenter: parent.verticalCenter
                            }
                        }
                        MouseArea {
                            id: headerTap
                            anchors.fill: parent
                            onClicked: root.headerClicked(headerCell.column)
                        }
                        Rectangle {
                            anchors.right: parent.right
                            anchors.verticalCenter: parent.verticalCenter
                            width: 1
                            height: parent.height - 10
                            color: Theme.divider
                            visible: headerCell.column < root.columnTitles.length - 1
                        }
                        Rectangle {
                            anchors.left: parent.left
                            anchors.right: parent.right
                            anchors.bottom: parent.bottom
                            height: 1
                            color: Theme.divider
                        }
                        // The grip that resizes the column; the icon column keeps its width.
                        MouseArea {
                            id: grip
                            property real startX
                            property real startWidth
                            objectName: "grip" + headerCell.column
                            visible: headerCell.column > 0
                            width: 6
                            anchors.right: parent.right
                            anchors.top: parent.top
                            anchors.bottom: parent.bottom
                            cursorShape: Qt.SplitHCursor
                            preventStealing: true
                            onPressed: mouse => {
                                startX = mapToItem(root, mouse.x, 0).x
                                startWidth = root.widthOf(headerCell.column)
                            }
                            onPositionChanged: mouse => {
                                const x = mapToItem(root, mouse.x, 0).x
                                root.resizeColumn(headerCell.column, startWidth + x - startX)
                            }
                        }
                    }
                }

                TableView {
                    id: table
                    objectName: "fileTable"
                    anchors.left: parent.left
                    anchors.right: parent.right
                    anchors.top: header.bottom
                    anchors.bottom: parent.bottom
                    clip: true
                    focus: true
                    activeFocusOnTab: true
                    boundsBehavior: Flickable.StopAtBounds
                    model: root.viewModel ? root.viewModel.displayedFiles : null
                    columnWidthProvider: column => root.widthOf(column)
                    rowHeightProvider: () => root.rowHeight
                    onWidthChanged: forceLayout()
                    Keys.onPressed: event => root.handleKey(event)

                    // Always shown when the rows overflow: with a million rows the bar is the map.
                    ScrollBar.vertical: ScrollBar {
                        policy: table.contentHeight > table.height ? ScrollBar.AlwaysOn
                                                                   : ScrollBar.AlwaysOff
                    }
                    ScrollBar.horizontal: ScrollBar {
                        policy: ScrollBar.AsNeeded
                    }

                    delegate: DelegateChooser {
                        DelegateChoice {
                            column: 0
                            delegate: Cell {
                                FileIconView {
                                    anchors.centerIn: parent
                                    categoryIcon: parent.model.categoryIcon
                                    categoryColor: parent.highlighted ? "white"
                                                                      : parent.model.categoryColor
                                }
                            }
                        }
                        DelegateChoice {
                            column: 1
                            delegate: Cell {
                                FileNameCell {
                                    x: 6
                                    width: parent.width - 12
                                    anchors.verticalCenter: parent.verticalCenter
                                    name: parent.model.name
                                    folder: parent.model.folder
                                    textColor: parent.highlighted ? "white" : Theme.primaryText
                                    secondaryColor: parent.highlighted
                                                    ? Qt.rgba(1, 1, 1, 0.8) : Theme.secondaryText
                                }
                            }
                        }
                        DelegateChoice {
                            column: 2
                            delegate: Cell {
                                FileSizeCell {
                                    x: 6
                                    width: parent.width - 12
                                    anchors.verticalCenter: parent.verticalCenter
                                    sizeText: parent.model.sizeText
                                    color: parent.highlighted ? "white" : Theme.primaryText
                                }
                            }
                        }
                        DelegateChoice {
                            column: 3
                            delegate: Cell {
                                CategoryBadge {
                                    objectName: "categoryBadge"
                                    x: 6
                                    anchors.verticalCenter: parent.verticalCenter
                                    category: parent.model.category
                                    categoryColor: parent.model.categoryColor
                                }
                            }
                        }
                        DelegateChoice {
                            column: 4
                            delegate: Cell {
                                Text {
                                    objectName: "modifiedText"
                                    x: 6
                                    width: parent.width - 12
                                    anchors.verticalCenter: parent.verticalCenter
                                    text: root.clockTick >= 0
                                          ? root.viewModel.formatRelativeDate(parent.model.modifiedMSecs)
                                          : ""
                                    elide: Text.ElideRight
                                    font.pixelSize: 12
                                    color: parent.highlighted ? "white" : Theme.secondaryText
                                }
                            }
                        }
                        DelegateChoice {
                            column: 5
                            delegate: Cell {
                                SafeToDeleteBadge {
                                    objectName: "safeBadge"
                                    x: 6
                                    anchors.verticalCenter: parent.verticalCenter
                                    isSafe: parent.model.isSafeToDelete
                                }
                            }
                        }
                    }
                }
            }
        }
    }

    // One cell: the row's background and the pointer handling every column shares.
    component Cell: Rectangle {
        id: cell
        required property int row
        required property int column
        required property var model
        readonly property bool isSelected: model.selected === true
        readonly property bool highlighted: isSelected && table.activeFocus

        implicitHeight: root.rowHeight
        color: isSelected ? (table.activeFocus ? Theme.accent : Theme.withOpacity(Theme.gray, 0.3))
                          : row % 2 === 1 ? Qt.rgba(0, 0, 0, 0.03) : Theme.textBackground

        // The outline of the row whose menu is open, drawn cell by cell.
        Item {
            anchors.fill: parent
            visible: root.contextRow === cell.row
            Rectangle {
                width: parent.width
                height: 2
                color: Theme.accent
            }
            Rectangle {
                width: parent.width
                height: 2
                anchors.bottom: parent.bottom
                color: Theme.accent
            }
            Rectangle {
                visible: cell.column === 0
                width: 2
                height: parent.height
                color: Theme.accent
            }
            Rectangle {
                visible: cell.column === root.columnTitles.length - 1
                width: 2
                height: parent.height
                anchors.right: parent.right
                color: Theme.accent
            }
        }

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.LeftButton | Qt.RightButton
            onPressed: mouse => {
                if (mouse.button === Qt.RightButton)
                    root.openContextMenu(cell.row, mapToItem(root, mouse.x, mouse.y))
                else
                    root.pressRow(cell.row, mouse.modifiers)
            }
            onDoubleClicked: mouse => {
                if (mouse.button === Qt.LeftButton)
                    root.revealClicked(cell.row)
            }
        }
    }
}
