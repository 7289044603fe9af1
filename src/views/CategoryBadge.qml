pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The category's emoji and name in its colour, on a pale pill of the same colour. On a selected
// row the pill turns white, since the row's own highlight would swallow a pale one; the name is
// shaded dark enough to read on whichever pill it sits.
Rectangle {
    id: root
    property int category: -1 // a ScanCategory value
    property string categoryName // "Videos"
    property color categoryColor: Theme.gray
    property bool onSelectedRow: false
    readonly property color textColor: Theme.readable(categoryColor, color, 4.5)

    implicitWidth: row.implicitWidth + 16
    implicitHeight: row.implicitHeight + 6
    radius: 4
    color: onSelectedRow ? Theme.textBackground
                         : Theme.over(Theme.withOpacity(categoryColor, 0.15), Theme.textBackground)

    Row {
        id: row
        x: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4
        Text {
            text: Icons.categoryEmoji(root.category)
            font.pixelSize: 11
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            objectName: "badgeText"
            text: root.categoryName
            font.pixelSize: 11
            font.weight: Font.Medium
            color: root.textColor
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
