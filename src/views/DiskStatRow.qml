pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// One figure of the disk card: a marker, a label and its value.
Row {
    id: root
    property string label
    property string value
    property color color: Theme.primaryText
    property string icon

    spacing: 8
    SymbolIcon {
        width: 14
        anchors.verticalCenter: parent.verticalCenter
        symbol: root.icon
        size: 10
        color: root.color
    }
    Text {
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        width: 50
        anchors.verticalCenter: parent.verticalCenter
        text: root.label
        font.pixelSize: 14
        color: Theme.secondaryText
    }
    Text {
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        anchors.verticalCenter: parent.verticalCenter
        text: root.value
        font.pixelSize: 14
        font.weight: Font.Medium
        color: Theme.primaryText
    }
}
