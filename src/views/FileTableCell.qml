pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// One cell of the file table: the row's background and the pointer handling every column shares.
Rectangle {
    id: cell
    required property Item table
    required property int row
    required property int column
    // TableView claims a delegate property named `selected` for a selection model of its
    // own, which this table does not use; the model's "selected" role is read from here.
    required property var model
    readonly property bool isSelected: model.selected === true
    readonly property bool highlighted: isSelected && cell.table.hasFocus

    implicitHeight: cell.table.rowHeight
    Accessible.role: Accessible.Cell
    Accessible.selectable: true
    Accessible.selected: isSelected
    color: isSelected ? (cell.table.hasFocus ? Theme.accent : Theme.withOpacity(Theme.gray, 0.3))
                    : row % 2 === 1 ? Qt.rgba(0, 0, 0, 0.03) : Theme.textBackground

    // The outline of the row whose menu is open, drawn cell by cell.
    Item {
        anchors.fill: parent
        visible: cell.table.contextRow === cell.row
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
            visible: cell.column === cell.table.columnCount - 1
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
                cell.table.openContextMenu(cell.row, mapToItem(root, mouse.x, mouse.y))
            else
                cell.table.pressRow(cell.row, mouse.modifiers)
        }
        onDoubleClicked: mouse => {
            if (mouse.button === Qt.LeftButton)
                cell.table.revealClicked(cell.row)
        }
    }
}
