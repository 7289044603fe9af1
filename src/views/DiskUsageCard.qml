pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// The boot volume at a glance: a ring of its usage, its used, free and total space, and a status.
GlassCard {
    id: root
    // The card reads as a named group, by the title it shows.
    Accessible.role: Accessible.Grouping
    Accessible.name: "Disk Usage"
    // The volume's figures: the program's disk report unless given others.
    property var diskInfo: RavelinthViewModel.disk.info

    readonly property real totalBytes: diskInfo ? diskInfo.totalBytes : 0
    readonly property real percentage: diskInfo ? Theme.usagePercent(diskInfo.usedBytes, totalBytes) : 0
    readonly property color usageColor: Theme.usageColor(percentage, totalBytes)
    property alias ring: ring
    property alias badge: badge

    padding: 24

    RowLayout {
        anchors.fill: parent
        spacing: 32

        AnimatedProgressRing {
            id: ring
            // A negative used size (reported by some volumes) shows as an empty ring.
            progress: Math.max(0, Math.min(100, root.percentage))
            size: 140
            lineWidth: 14
        }
        ColumnLayout {
            spacing: 16
            Layout.alignment: Qt.AlignVCenter
            Row {
                spacing: 8
                SymbolIcon {
                    anchors.verticalCenter: parent.verticalCenter
                    symbol: "internaldrive.fill"
                    size: Theme.title2Size
                    color: root.usageColor
                }
                Text {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.diskInfo ? root.diskInfo.name : ""
                    font.pixelSize: Theme.title2Size
                    font.bold: true
                    color: Theme.primaryText
                }
            }
            DiskStatRow {
                label: "Used"
                value: root.diskInfo ? TextFormat.byteCount(root.diskInfo.usedBytes, TextFormat.binaryUnits) : ""
                color: root.usageColor
                icon: "circle.fill"
            }
            DiskStatRow {
                label: "Free"
                value: root.diskInfo ? TextFormat.byteCount(root.diskInfo.freeBytes, TextFormat.binaryUnits) : ""
                color: Theme.green
                icon: "circle"
            }
            DiskStatRow {
                label: "Total"
                value: root.diskInfo ? TextFormat.byteCount(root.diskInfo.totalBytes, TextFormat.binaryUnits) : ""
                color: Theme.secondaryText
                icon: "circle.dotted"
            }
        }
        Item {
            Layout.fillWidth: true
        }
        StatusBadge {
            id: badge
            percentage: root.percentage
            Layout.alignment: Qt.AlignVCenter
        }
    }
}
