import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The left column: one-tap scans of preset folders, the category filter, and the volume's usage.
Rectangle {
    id: root
    property RavelinthViewModel viewModel
    // The list's selection among the quick-access rows; -1 when none.
    property int selectedLocation: -1
    readonly property bool hasDiskInfo: viewModel !== null && viewModel.diskInfo !== null
                                        && viewModel.diskInfo !== undefined
    property alias quickAccessRows: quickAccessRepeater
    property alias categoryRows: categoryRepeater
    property alias allFilesRow: allFilesRow

    implicitWidth: 240
    Layout.minimumWidth: 200
    implicitHeight: 600
    color: Qt.tint(Theme.windowBackground, Theme.withOpacity("#FFFFFF", 0.35))

    component SectionHeader: Row {
        property string title
        property string icon
        spacing: 4
        leftPadding: 10
        topPadding: 14
        bottomPadding: 4
        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: parent.icon
            size: 11
            color: Theme.secondaryText
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: parent.title
            font.pixelSize: Theme.captionSize
            font.weight: Font.DemiBold
            color: Theme.secondaryText
        }
    }

    ScrollView {
        anchors.fill: parent
        contentWidth: availableWidth
        clip: true

        ColumnLayout {
            width: root.width - 16
            x: 8
            spacing: 0

            SectionHeader {
                title: "Quick Access"
                icon: "bolt.fill"
            }
            Repeater {
                id: quickAccessRepeater
                model: AppContext.quickAccessLocations
                QuickAccessRow {
                    required property var modelData
                    required property int index
                    Layout.fillWidth: true
                    location: modelData
                    isSelected: root.selectedLocation === index
                    onTapped: {
                        root.selectedLocation = index
                        // The path first, so the scan runs on this folder whatever was typed.
                        root.viewModel.scanPath = modelData.path
                        root.viewModel.startScan()
                    }
                }
            }

            SectionHeader {
                title: "Categories"
                icon: "folder.fill"
            }
            CategoryRow {
                id: allFilesRow
                Layout.fillWidth: true
                title: "All Files"
                icon: "doc.on.doc.fill"
                tint: Theme.accent
                count: root.viewModel ? root.viewModel.fileCount : 0
                isSelected: root.viewModel !== null && root.viewModel.categoryFilter === ""
                onTapped: root.viewModel.categoryFilter = ""
            }
            Repeater {
                id: categoryRepeater
                model: root.viewModel ? root.viewModel.categoryStats : []
                CategoryRow {
                    required property var modelData
                    Layout.fillWidth: true
                    title: modelData.category
                    icon: modelData.icon
                    tint: modelData.color
                    count: modelData.fileCount
                    isSelected: root.viewModel.categoryFilter === modelData.category
                    onTapped: root.viewModel.categoryFilter = modelData.category
                }
            }

            SectionHeader {
                title: "Storage"
                icon: "internaldrive.fill"
            }
            Loader {
                id: diskLoader
                Layout.fillWidth: true
                Layout.leftMargin: 6
                Layout.rightMargin: 6
                active: root.hasDiskInfo
                visible: active
                sourceComponent: DiskUsageSidebarItem {
                    diskInfo: root.viewModel.diskInfo
                }
            }
            Item {
                Layout.preferredHeight: 12
            }
        }
    }
}
