import QtQuick
import Ravelinth
import QtQuick.Layouts

// What the last scan found: how many files, their total size and how much may safely go.
GlassCard {
    id: root
    property RavelinthViewModel viewModel
    readonly property string durationText: viewModel && viewModel.scanState.kind === "completed"
                                           ? "Completed in " + TextFormat.oneDecimal(viewModel.scanState.duration) + "s"
                                           : ""

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
                text: "Scan Summary"
                font.pixelSize: Theme.headlineSize
                font.bold: true
                color: Theme.primaryText
            }
            Item {
                Layout.fillWidth: true
            }
            Text {
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
                value: root.viewModel ? String(root.viewModel.fileCount) : ""
                icon: "doc.fill"
                tint: Theme.blue
            }
            SummaryStatItem {
                objectName: "totalSize"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Total Size"
                value: root.viewModel ? TextFormat.byteCount(root.viewModel.totalScannedSize) : ""
                icon: "externaldrive.fill"
                tint: Theme.purple
            }
            SummaryStatItem {
                objectName: "safeToDelete"
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                title: "Safe to Delete"
                value: root.viewModel ? TextFormat.byteCount(root.viewModel.potentialSavings) : ""
                icon: "trash.fill"
                tint: Theme.green
            }
        }
    }
}
