pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// The volume's usage in a small space: a mini ring beside the free space.
Item {
    id: root
    property var diskInfo: null
    readonly property real totalBytes: diskInfo ? diskInfo.totalBytes : 0
    readonly property real percentage: diskInfo ? Theme.usagePercent(diskInfo.usedBytes, totalBytes) : 0
    readonly property string freeText: diskInfo ? TextFormat.byteCount(diskInfo.freeBytes, TextFormat.binaryUnits) : ""

    implicitWidth: row.implicitWidth + 24
    implicitHeight: row.implicitHeight + 12

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 8
        MiniProgressRing {
            anchors.verticalCenter: parent.verticalCenter
            progress: Math.max(0, Math.min(100, root.percentage))
            color: Theme.usageColor(root.percentage, root.totalBytes)
            size: 24
        }
        Column {
            anchors.verticalCenter: parent.verticalCenter
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                text: root.freeText
                font.pixelSize: 11
                font.weight: Font.DemiBold
                color: Theme.primaryText
            }
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                text: "free"
                font.pixelSize: 9
                color: Theme.secondaryText
            }
        }
    }
}
