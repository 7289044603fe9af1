pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// How full the volume is, in a word: healthy, moderate or critical.
Item {
    id: root
    property real percentage: 0

    // Strict comparisons: exactly 70 is already moderate, exactly 85 already critical.
    readonly property int level: percentage < 70 ? 0 : percentage < 85 ? 1 : 2
    readonly property string text: ["Healthy", "Moderate", "Critical"][level]
    readonly property string icon: ["checkmark.circle.fill", "exclamationmark.triangle.fill",
                                     "exclamationmark.octagon.fill"][level]
    readonly property color color: [Theme.diskGreen, Theme.diskYellow, Theme.diskRed][level]

    implicitWidth: column.implicitWidth + 32
    implicitHeight: column.implicitHeight + 32

    Rectangle {
        anchors.fill: parent
        radius: 12
        color: Theme.withOpacity(root.color, 0.05)
    }
    Column {
        id: column
        anchors.centerIn: parent
        spacing: 8
        SymbolIcon {
            anchors.horizontalCenter: parent.horizontalCenter
            symbol: root.icon
            size: 28
            color: root.color
        }
        Rectangle {
            objectName: "badge"
            anchors.horizontalCenter: parent.horizontalCenter
            implicitWidth: label.implicitWidth + 24
            implicitHeight: label.implicitHeight + 8
            radius: 6
            color: Theme.withOpacity(root.color, 0.15)
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                id: label
                objectName: "badgeText"
                anchors.centerIn: parent
                text: root.text
                font.pixelSize: 12
                font.weight: Font.DemiBold
                // Shaded to read on the pale pill as the card shows it.
                color: Theme.readable(root.color, Theme.over(parent.color, Theme.over(
                                          Theme.withOpacity(root.color, 0.05), Theme.textBackground)), 4.5)
            }
        }
    }
}
