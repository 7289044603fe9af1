pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// What the last scan found: how many files, their total size and how much may safely go.
GlassCard {
    id: root
    Accessible.role: Accessible.Grouping
    Accessible.name: "Scan Summary"
    readonly property string durationText:
        RavelinthViewModel.scan.state.phase === ScanPhase.Completed
        ? "Completed in " + TextFormat.oneDecimal(RavelinthViewModel.scan.state.duration) + "s" : ""

    ColumnLayout {
        anchors.fill: parent
        spacing: 16
        RowLayout {
            Layout.fillWidth: true
            SymbolIcon {
                symbol: "doc.text.magnifyingglass"
                size: 16
                color: Theme.primaryText
            }
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                text: "Scan Summary"
                font.pixelSize: Theme.headlineSize
                font.bold: true
                color: Theme.primaryText
            }
            Item {
                Layout.fillWidth: true
            }
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                objectName: "completedIn"
                text: root.durationText
                visible: text !== ""
                font.pixelSize: Theme.captionSize
                color: Theme.secondaryText
            }
        }
        GridLayout {
            Layout.fillWidth: true
            columns: 3
            columnSpacing: 16
            rowSpacing: 16
            SummaryStatItem {
                objectName: "filesFound"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Files Found"
                value: String(RavelinthViewModel.fileList.fileCount)
                icon: "doc.fill"
                tint: Theme.blue
            }
            SummaryStatItem {
                objectName: "totalSize"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Total Size"
                value: TextFormat.byteCount(RavelinthViewModel.fileList.totalScannedSize, TextFormat.binaryUnits)
                icon: "externaldrive.fill"
                tint: Theme.purple
            }
            SummaryStatItem {
                objectName: "safeToDelete"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Safe to Delete"
                value: TextFormat.byteCount(RavelinthViewModel.fileList.potentialSavings, TextFormat.binaryUnits)
                icon: "trash.fill"
                tint: Theme.green
            }
        }
    }
}
