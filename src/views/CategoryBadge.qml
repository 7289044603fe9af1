pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The category's emoji and name in its colour, on a pale pill of the same colour.
Rectangle {
    id: root
    property int category: -1 // a ScanCategory value
    property string categoryName // "Videos"
    property color categoryColor: Theme.gray

    implicitWidth: row.implicitWidth + 16
    implicitHeight: row.implicitHeight + 6
    radius: 4
    color: Theme.withOpacity(categoryColor, 0.15)

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
            text: root.categoryName
            font.pixelSize: 11
            font.weight: Font.Medium
            color: root.categoryColor
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
