import QtQuick
import Ravelinth
import QtQuick.Layouts

// Each category's share of everything the scan kept, in the order the view model gives.
GlassCard {
    id: root
    property var stats: []
    property real totalSize: 0
    property alias bars: bars

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
            model: root.stats
            CategoryBar {
                required property var modelData
                Layout.fillWidth: true
                stat: modelData
                percentage: root.totalSize >= 1 ? modelData.totalSize / root.totalSize * 100 : 0
            }
        }
    }
}
