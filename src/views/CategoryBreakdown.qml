pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// Each category's share of everything the scan kept, largest first.
GlassCard {
    id: root
    Accessible.role: Accessible.Grouping
    Accessible.name: "Categories"
    property real totalSize: RavelinthViewModel.fileList.totalScannedSize

    ColumnLayout {
        anchors.fill: parent
        spacing: 12
        Row {
            spacing: 8
            SymbolIcon {
                anchors.verticalCenter: parent.verticalCenter
                symbol: "chart.bar.fill"
                size: 16
                color: Theme.primaryText
            }
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                anchors.verticalCenter: parent.verticalCenter
                text: "Categories"
                font.pixelSize: Theme.headlineSize
                font.bold: true
                color: Theme.primaryText
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: 1
            color: Theme.divider
        }
        Repeater {
            id: bars
            objectName: "bars"
            model: RavelinthViewModel.categoryStats
            CategoryBar {
                Layout.fillWidth: true
                percentage: root.totalSize >= 1 ? totalSize / root.totalSize * 100 : 0
            }
        }
    }
}
