pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// One category's share of the scanned size, as a bar that grows from the left when it appears.
// Its category's figures are the roles of a CategoryStatsModel row.
RowLayout {
    id: root
    required property string name
    required property string icon
    required property color color
    required property int fileCount
    required property real totalSize
    property real percentage: 0
    property real animatedWidth: 0
    readonly property color tint: color

    spacing: 8

    Behavior on animatedWidth {
        SpringAnimation {
            spring: 4
            damping: 0.5
            epsilon: 0.05
        }
    }
    // The bar starts empty and grows a moment after it is shown.
    Timer {
        interval: 100
        running: true
        onTriggered: root.animatedWidth = Qt.binding(() => root.percentage)
    }

    SymbolIcon {
        Layout.preferredWidth: 20
        symbol: root.icon
        size: 14
        color: root.tint
    }
    Text {
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Layout.preferredWidth: 80
        text: root.name
        font.pixelSize: 13
        color: Theme.primaryText
        elide: Text.ElideRight
    }
    Rectangle {
        id: track
        Layout.fillWidth: true
        Layout.preferredHeight: 8
        radius: 4
        color: Theme.withOpacity(root.tint, 0.15)
        Rectangle {
            objectName: "fill"
            height: parent.height
            width: Math.max(0, Math.min(track.width, track.width * root.animatedWidth / 100))
            radius: 4
            color: root.tint
        }
    }
    Column {
        Layout.preferredWidth: 80
        spacing: 2
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            text: TextFormat.byteCount(root.totalSize, TextFormat.binaryUnits)
            font.pixelSize: 12
            font.weight: Font.Medium
            color: Theme.primaryText
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            text: root.fileCount + " files"
            font.pixelSize: 10
            color: Theme.secondaryText
        }
    }
}
