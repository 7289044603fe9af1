pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// A small grey capsule with an icon and a value, for the running counts of a scan.
Rectangle {
    id: root
    property string icon
    property string value

    implicitWidth: row.implicitWidth + 16
    implicitHeight: row.implicitHeight + 8
    radius: 4
    color: Theme.withOpacity(Theme.gray, 0.1)

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 4
        SymbolIcon {
            symbol: root.icon
            size: 12
            color: Theme.secondaryText
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "statPillValue"
            text: root.value
            font.pixelSize: 11
            font.weight: Font.Medium
            color: Theme.primaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }
}
