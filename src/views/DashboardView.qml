pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The first tab: the boot volume and the last scan in up to four cards, each shown only when it
// has something to show. The scan's cards are made when the tab is shown, not when a scan ends
// behind the file list: making them then held up the frame in which the list appeared.
ScrollView {
    id: root
    readonly property bool hasDiskInfo: RavelinthViewModel.disk.available

    contentWidth: availableWidth
    contentHeight: stack.implicitHeight + 48
    clip: true

    ColumnLayout {
        id: stack
        width: root.availableWidth - 48
        x: 24
        y: 24
        spacing: 20

        // Loaded from its file: the 6.4 Loader gives what it makes a context of its own, which a
        // component bound to this file refuses.
        Loader {
            id: diskLoader
            objectName: "diskLoader"
            Layout.fillWidth: true
            active: root.hasDiskInfo
            visible: active
            source: "DiskUsageCard.qml"
        }
        Loader {
            id: summaryLoader
            objectName: "summaryLoader"
            Layout.fillWidth: true
            active: root.visible && RavelinthViewModel.fileList.fileCount > 0
            visible: active
            source: "ScanSummaryCard.qml"
        }
        Loader {
            id: breakdownLoader
            objectName: "breakdownLoader"
            Layout.fillWidth: true
            active: root.visible && RavelinthViewModel.categoryStats.count > 0
            visible: active
            source: "CategoryBreakdown.qml"
        }
        Loader {
            id: savingsLoader
            objectName: "savingsLoader"
            Layout.fillWidth: true
            active: root.visible && RavelinthViewModel.fileList.potentialSavings >= 1
            visible: active
            source: "PotentialSavingsCard.qml"
        }
    }
}
