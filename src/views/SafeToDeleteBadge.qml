pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// "Safe" in green for files that may go without a second look, "Review" in grey otherwise.
Rectangle {
    id: root
    property bool isSafe: false
    readonly property color tint: isSafe ? Theme.green : Theme.secondaryText

    implicitWidth: row.implicitWidth + 16
    implicitHeight: row.implicitHeight + 6
    radius: 4
    color: Theme.withOpacity(isSafe ? Theme.green : Theme.gray, 0.15)

    Row {
        id: row
        x: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4
        SymbolIcon {
            symbol: root.isSafe ? "checkmark.circle.fill" : "minus.circle"
            size: 12
            color: root.tint
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: root.isSafe ? "Safe" : "Review"
            font.pixelSize: 11
            font.weight: Font.Medium
            color: root.tint
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
