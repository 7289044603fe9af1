pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// A category in the sidebar with its file count; the selected one is the list's filter.
Item {
    id: root
    property string title
    property string symbol
    property color tint: Theme.accent
    property int count: 0
    property bool isSelected: false
    signal tapped

    implicitHeight: row.implicitHeight + 8 + 4
    implicitWidth: row.implicitWidth + 20

    Rectangle {
        anchors.fill: parent
        anchors.topMargin: 2
        anchors.bottomMargin: 2
        radius: 6
        color: root.isSelected ? Theme.withOpacity(root.tint, 0.15)
                               : hover.hovered ? Theme.withOpacity(Theme.gray, 0.1) : "transparent"
    }
    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 10
        anchors.topMargin: 2 + 4
        anchors.bottomMargin: 2 + 4
        spacing: 6
        SymbolIcon {
            Layout.preferredWidth: 24
            symbol: root.symbol
            size: 14
            color: root.tint
        }
        Text {
            Layout.fillWidth: true
            text: root.title
            font.pixelSize: 13
            color: Theme.primaryText
            elide: Text.ElideRight
        }
        Rectangle {
            id: badge
            objectName: "badge"
            visible: root.count >= 1
            implicitWidth: countText.implicitWidth + 16
            implicitHeight: countText.implicitHeight + 4
            radius: height / 2
            // The capsule carries white text, so it is shaded to at least 4.5:1 against white,
            // keeping its hue; the selected row's capsule is a deeper shade of it.
            color: Theme.readable(root.tint, countText.color, root.isSelected ? 6 : 4.5)
            Text {
                id: countText
                objectName: "badgeText"
                anchors.centerIn: parent
                text: String(root.count)
                font.pixelSize: 11
                font.weight: Font.Medium
                color: "white"
            }
        }
    }
    HoverHandler {
        id: hover
        cursorShape: Qt.PointingHandCursor
    }
    TapHandler {
        onTapped: root.tapped()
    }
    activeFocusOnTab: true
    Keys.onSpacePressed: tapped()
    Keys.onReturnPressed: tapped()
    Keys.onEnterPressed: tapped()
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: 1
        anchors.bottomMargin: 1
        radius: 7
        color: "transparent"
        border.width: 2
        border.color: Theme.withOpacity(Theme.accent, 0.5)
        visible: root.activeFocus
    }
    Accessible.role: Accessible.Button
    Accessible.checkable: true
    Accessible.checked: isSelected
    Accessible.selected: isSelected
    Accessible.onPressAction: tapped()
    Accessible.name: root.title
}
