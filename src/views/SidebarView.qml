pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The left column: one-tap scans of preset folders, the category filter, and the volume's usage.
Rectangle {
    id: root
    // The quick-access row of the folder being scanned, however the path got there (a row, the
    // path field, the folder chooser, a menu); -1 when no row names it.
    readonly property int selectedLocation: locationIndex(RavelinthViewModel.scan.path)
    readonly property bool hasDiskInfo: RavelinthViewModel.disk.available

    // "/home/a/" and "/home/a" name the same folder; "/" stays itself.
    function withoutTrailingSlash(path) {
        let end = path.length
        while (end > 1 && path[end - 1] === "/")
            --end
        return path.slice(0, end)
    }

    function locationIndex(path) {
        const wanted = withoutTrailingSlash(path)
        const locations = AppContext.quickAccessLocations
        for (let i = 0; i < locations.length; ++i) {
            if (withoutTrailingSlash(locations[i].path) === wanted)
                return i
        }
        return -1
    }

    implicitWidth: 240
    Layout.minimumWidth: 200
    implicitHeight: 600
    color: Theme.sidebarBackground

    component SectionHeader: Row {
        id: sectionHeader
        property string title
        property string icon
        spacing: 4
        leftPadding: 10
        topPadding: 14
        bottomPadding: 4
        SymbolIcon {
            anchors.verticalCenter: parent.verticalCenter
            symbol: sectionHeader.icon
            size: 11
            color: Theme.secondaryText
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            anchors.verticalCenter: parent.verticalCenter
            text: sectionHeader.title
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
                objectName: "quickAccessRows"
                model: AppContext.quickAccessLocations
                QuickAccessRow {
                    id: quickAccessRow
                    required property var modelData
                    required property int index
                    Layout.fillWidth: true
                    location: modelData
                    isSelected: root.selectedLocation === index
                    onTapped: {
                        // The path first, so the scan runs on this folder whatever was typed.
                        RavelinthViewModel.scan.path = quickAccessRow.modelData.path
                        RavelinthViewModel.scan.start()
                    }
                }
            }

            SectionHeader {
                title: "Categories"
                icon: "folder.fill"
            }
            CategoryRow {
                id: allFilesRow
                objectName: "allFilesRow"
                Layout.fillWidth: true
                title: "All Files"
                symbol: "doc.on.doc.fill"
                tint: Theme.accent
                count: RavelinthViewModel.fileList.fileCount
                isSelected: RavelinthViewModel.fileList.categoryFilter === -1
                onTapped: RavelinthViewModel.fileList.categoryFilter = -1
            }
            Repeater {
                id: categoryRepeater
                objectName: "categoryRows"
                model: RavelinthViewModel.categoryStats
                CategoryRow {
                    id: categoryRow
                    required property int category
                    required property string name
                    required property string icon
                    required property color color
                    required property int fileCount
                    Layout.fillWidth: true
                    title: name
                    symbol: icon
                    tint: color
                    count: fileCount
                    isSelected: RavelinthViewModel.fileList.categoryFilter === category
                    onTapped: RavelinthViewModel.fileList.categoryFilter = categoryRow.category
                }
            }

            SectionHeader {
                title: "Storage"
                icon: "internaldrive.fill"
            }
            // Loaded from its file: the 6.4 Loader gives what it makes a context of its own,
            // which a component bound to this file refuses.
            Loader {
                id: diskLoader
                objectName: "diskLoader"
                Layout.fillWidth: true
                Layout.leftMargin: 6
                Layout.rightMargin: 6
                active: root.hasDiskInfo
                visible: active
                source: "DiskUsageSidebarItem.qml"
            }
            Item {
                Layout.preferredHeight: 12
            }
        }
    }
}
