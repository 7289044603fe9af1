pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// One figure of the scan summary on a tinted tile.
Rectangle {
    id: root
    property string title
    property string value
    property string icon
    property color tint: Theme.accent

    implicitWidth: column.implicitWidth + 32
    implicitHeight: column.implicitHeight + 32
    radius: 12
    color: Theme.withOpacity(tint, 0.1)

    Column {
        id: column
        anchors.centerIn: parent
        spacing: 8
        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: root.icon
            size: 24
            color: root.tint
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.value
            font.pixelSize: 18
            font.bold: true
            color: Theme.primaryText
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.title
            font.pixelSize: Theme.captionSize
            color: Theme.secondaryText
        }
    }
}
