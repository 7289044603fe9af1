pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// What the file list shows instead of an empty table: a scan under way, nothing scanned yet, or
// files that the search and the category filter all hide.
Item {
    id: root
    // "scanning", "noFiles" or "noMatches"
    readonly property string kind: RavelinthViewModel.scan.isScanning ? "scanning"
                                 : RavelinthViewModel.fileList.fileCount === 0 ? "noFiles"
                                 : "noMatches"
    readonly property string title: kind === "scanning" ? "Scanning..."
                                  : kind === "noFiles" ? "No Files Scanned" : "No Matching Files"
    readonly property string message: kind === "scanning" ? RavelinthViewModel.scan.state.statusMessage
                                    : kind === "noFiles"
                                      ? "Select a folder and click 'Start Scan' to find large files"
                                      : "Try adjusting your filters or search query"

    // Between new files arriving and their list being published the table is briefly empty;
    // saying "No Matching Files" then would be wrong, so nothing is said until the list is in.
    property bool listPending: false
    Connections {
        target: RavelinthViewModel.fileList
        function onFilesChanged() {
            root.listPending = RavelinthViewModel.fileList.fileCount > 0
        }
        function onModelReset() {
            root.listPending = false
        }
    }

    implicitWidth: column.implicitWidth + 80
    implicitHeight: column.implicitHeight + 80

    Column {
        id: column
        anchors.centerIn: parent
        width: Math.min(implicitWidth, root.width - 80)
        spacing: 24
        visible: !(root.kind === "noMatches" && root.listPending)

        Item {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 64
            height: root.kind === "scanning" ? 40 : root.kind === "noFiles" ? 64 : 48
            ScanningIndicator {
                objectName: "scanningIndicator"
                anchors.centerIn: parent
                size: 40
                visible: root.kind === "scanning"
            }
            SymbolIcon {
                anchors.centerIn: parent
                visible: root.kind === "noFiles"
                symbol: "doc.text.magnifyingglass"
                size: 64
                color: Theme.secondaryText
            }
            SymbolIcon {
                anchors.centerIn: parent
                visible: root.kind === "noMatches"
                symbol: "magnifyingglass"
                size: 48
                color: Theme.secondaryText
            }
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "emptyTitle"
            anchors.horizontalCenter: parent.horizontalCenter
            text: root.title
            font.pixelSize: Theme.titleSize
            font.bold: true
            color: Theme.primaryText
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "emptyMessage"
            width: Math.min(implicitWidth, root.width - 80)
            anchors.horizontalCenter: parent.horizontalCenter
            horizontalAlignment: Text.AlignHCenter
            text: root.message
            wrapMode: Text.Wrap
            font.pixelSize: Theme.subheadlineSize
            color: Theme.secondaryText
        }
        ClearFiltersButton {
            objectName: "emptyClearFilters"
            anchors.horizontalCenter: parent.horizontalCenter
            visible: root.kind === "noMatches"
        }
    }
}
