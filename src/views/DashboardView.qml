import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The first tab: the boot volume and the last scan in up to four cards, each shown only when it
// has something to show. The scan's cards are made when the tab is shown, not when a scan ends
// behind the file list: making them then held up the frame in which the list appeared.
ScrollView {
    id: root
    property RavelinthViewModel viewModel
    readonly property bool hasDiskInfo: viewModel !== null && viewModel.diskInfo !== null
                                        && viewModel.diskInfo !== undefined
    property alias diskCard: diskLoader.item
    property alias summaryCard: summaryLoader.item
    property alias breakdownCard: breakdownLoader.item
    property alias savingsCard: savingsLoader.item

    contentWidth: availableWidth
    contentHeight: stack.implicitHeight + 48
    clip: true

    ColumnLayout {
        id: stack
        width: root.availableWidth - 48
        x: 24
        y: 24
        spacing: 20

        Loader {
            id: diskLoader
            Layout.fillWidth: true
            active: root.hasDiskInfo
            visible: active
            sourceComponent: DiskUsageCard {
                diskInfo: root.viewModel.diskInfo
            }
        }
        Loader {
            id: summaryLoader
            Layout.fillWidth: true
            active: root.visible && root.viewModel !== null && root.viewModel.fileCount > 0
            visible: active
            sourceComponent: ScanSummaryCard {
                viewModel: root.viewModel
            }
        }
        Loader {
            id: breakdownLoader
            Layout.fillWidth: true
            active: root.visible && root.viewModel !== null && root.viewModel.categoryStats.length > 0
            visible: active
            sourceComponent: CategoryBreakdown {
                stats: root.viewModel.categoryStats
                totalSize: root.viewModel.totalScannedSize
            }
        }
        Loader {
            id: savingsLoader
            Layout.fillWidth: true
            active: root.visible && root.viewModel !== null && root.viewModel.potentialSavings >= 1
            visible: active
            sourceComponent: PotentialSavingsCard {
                savings: root.viewModel.potentialSavings
                fileCount: root.viewModel.potentialSavingsFileCount
            }
        }
    }
}
