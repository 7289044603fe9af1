pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// The boot volume in the sidebar: its name, a usage bar and the used and free space.
ColumnLayout {
    id: root
    // The volume's figures: the program's disk report unless given others.
    property var diskInfo: RavelinthViewModel.disk.info
    readonly property real totalBytes: diskInfo ? diskInfo.totalBytes : 0
    readonly property real percentage: diskInfo ? Theme.usagePercent(diskInfo.usedBytes, totalBytes) : 0
    readonly property color usageColor: Theme.usageColor(percentage, totalBytes)

    spacing: 6

    Row {
        Layout.topMargin: 4
        Layout.leftMargin: 4
        spacing: 6
        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "internaldrive.fill"
            size: 12
            color: root.usageColor
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            anchors.verticalCenter: parent.verticalCenter
            text: root.diskInfo ? root.diskInfo.name : ""
            font.pixelSize: 12
            font.weight: Font.Medium
            color: Theme.primaryText
        }
    }
    Rectangle {
        id: track
        Layout.fillWidth: true
        Layout.leftMargin: 4
        Layout.rightMargin: 4
        Layout.preferredHeight: 6
        radius: 3
        color: Theme.withOpacity(Theme.gray, 0.3)
        Rectangle {
            height: parent.height
            width: Math.max(0, Math.min(track.width, track.width * root.percentage / 100))
            radius: 3
            color: root.usageColor
        }
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.leftMargin: 4
        Layout.rightMargin: 4
        Layout.bottomMargin: 4
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            text: (root.diskInfo ? TextFormat.byteCount(root.diskInfo.usedBytes, TextFormat.binaryUnits) : "") + " used"
            font.pixelSize: 10
            color: Theme.secondaryText
        }
        Item {
            Layout.fillWidth: true
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            text: (root.diskInfo ? TextFormat.byteCount(root.diskInfo.freeBytes, TextFormat.binaryUnits) : "") + " free"
            font.pixelSize: 10
            color: Theme.secondaryText
        }
    }
}
