pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// "Safe" in green for files that may go without a second look, "Review" in grey otherwise. On a
// selected row the pill turns white so the row's highlight does not swallow it.
Rectangle {
    id: root
    property bool isSafe: false
    property bool onSelectedRow: false
    readonly property color tint: Theme.readable(
        isSafe ? Theme.green : Theme.over(Theme.secondaryText, Theme.textBackground), color, 4.5)

    implicitWidth: row.implicitWidth + 16
    implicitHeight: row.implicitHeight + 6
    radius: 4
    color: onSelectedRow ? Theme.textBackground
                         : Theme.over(Theme.withOpacity(isSafe ? Theme.green : Theme.gray, 0.15),
                                      Theme.textBackground)

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
            objectName: "badgeText"
            text: root.isSafe ? "Safe" : "Review"
            font.pixelSize: 11
            font.weight: Font.Medium
            color: root.tint
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
