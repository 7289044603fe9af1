pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// The titles over the file table: the model's own header titles, the sorted column in bold with
// its direction, a click to sort by a column, and a grip at each edge to resize it.
HorizontalHeaderView {
    id: root
    required property FileTable table

    syncView: table.tableView
    clip: true

    delegate: Rectangle {
        id: headerCell
        required property int column
        required property string display
        readonly property bool sorted: column === RavelinthViewModel.fileList.sortColumn
        implicitHeight: 26
        implicitWidth: 40
        color: headerTap.pressed ? Theme.withOpacity(Theme.gray, 0.15) : Theme.textBackground
        objectName: "header" + column
        // A column header is a button to a screen reader: pressing it sorts, as a click does.
        Accessible.role: Accessible.Button
        Accessible.name: (display !== "" ? display : "Type")
                         + (sorted ? (RavelinthViewModel.fileList.sortAscending ? ", sorted ascending"
                                                                                 : ", sorted descending")
                                   : "")
        Accessible.onPressAction: RavelinthViewModel.fileList.sortByColumn(column)

        Row {
            anchors.left: parent.left
            anchors.leftMargin: 8
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            Text {
                text: headerCell.display
                font.pixelSize: 12
                font.weight: headerCell.sorted ? Font.DemiBold : Font.Normal
                color: headerCell.sorted ? Theme.primaryText : Theme.secondaryText
                elide: Text.ElideRight
                anchors.verticalCenter: parent.verticalCenter
            }
            SymbolIcon {
                visible: headerCell.sorted
                symbol: RavelinthViewModel.fileList.sortAscending ? "chevron.up" : "chevron.down"
                size: 14
                color: Theme.secondaryText
                anchors.verticalCenter: parent.verticalCenter
            }
        }
        MouseArea {
            id: headerTap
            anchors.fill: parent
            onClicked: RavelinthViewModel.fileList.sortByColumn(headerCell.column)
        }
        Rectangle {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 1
            height: parent.height - 10
            color: Theme.divider
            visible: headerCell.column < root.table.columnCount - 1
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
                startX = mapToItem(root.table, mouse.x, 0).x
                startWidth = root.table.widthOf(headerCell.column)
            }
            onPositionChanged: mouse => {
                const x = mapToItem(root.table, mouse.x, 0).x
                root.table.resizeColumn(headerCell.column, startWidth + x - startX)
            }
        }
    }
}
