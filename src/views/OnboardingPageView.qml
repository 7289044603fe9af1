pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// One page of the introduction: a tinted icon, the title, subtitle and description, and the
// page's features when it has any.
Item {
    id: root
    property var page: ({ icon: "", iconColor: Theme.accent, title: "", subtitle: "",
                          description: "", features: [] })
    readonly property bool hasFeatures: page.features.length > 0

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 80, 440)
        spacing: 12

        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            Layout.preferredWidth: 100
            Layout.preferredHeight: 100
            Layout.bottomMargin: 8
            radius: 50
            color: Theme.withOpacity(root.page.iconColor, 0.15)
            SymbolIcon {
                anchors.centerIn: parent
                symbol: root.page.icon
                size: 44
                color: root.page.iconColor
            }
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "title"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: root.page.title
            font.pixelSize: 28
            font.bold: true
            color: Theme.primaryText
            wrapMode: Text.WordWrap
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "subtitle"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: root.page.subtitle
            font.pixelSize: 16
            font.weight: Font.Medium
            color: Theme.secondaryText
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "description"
            Layout.fillWidth: true
            horizontalAlignment: Text.AlignHCenter
            text: root.page.description
            font.pixelSize: 15
            color: Theme.primaryText
            wrapMode: Text.WordWrap
            lineHeight: 1.15
        }
        Rectangle {
            objectName: "features"
            visible: root.hasFeatures
            Layout.fillWidth: true
            Layout.topMargin: 8
            implicitHeight: featureColumn.implicitHeight + 40
            radius: 12
            color: Theme.withOpacity(root.page.iconColor, 0.08)
            Column {
                id: featureColumn
                x: 20
                y: 20
                width: parent.width - 40
                spacing: 10
                Repeater {
                    model: root.page.features
                    Row {
                        required property var modelData
                        spacing: 10
                        SymbolIcon {
                            width: 20
                            anchors.verticalCenter: parent.verticalCenter
                            symbol: modelData.icon
                            size: 16
                            color: root.page.iconColor
                        }
                        Text {
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                            anchors.verticalCenter: parent.verticalCenter
                            text: modelData.text
                            font.pixelSize: Theme.bodySize
                            color: Theme.primaryText
                        }
                    }
                }
            }
        }
    }
}
