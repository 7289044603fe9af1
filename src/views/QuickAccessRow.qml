pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// A preset folder in the sidebar; tapping it scans that folder.
Item {
    id: root
    property var location: ({})
    property bool isSelected: false
    signal tapped

    implicitHeight: row.implicitHeight + 8 + 4
    implicitWidth: row.implicitWidth + 20

    Rectangle {
        anchors.fill: parent
        anchors.topMargin: 2
        anchors.bottomMargin: 2
        radius: 6
        color: root.isSelected ? Theme.withOpacity(Theme.accent, 0.15)
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
            symbol: root.location.icon !== undefined ? root.location.icon : ""
            size: 16
            color: root.location.color !== undefined ? root.location.color : Theme.accent
        }
        Text {
            Layout.fillWidth: true
            text: root.location.name !== undefined ? root.location.name : ""
            font.pixelSize: 13
            color: Theme.primaryText
            elide: Text.ElideRight
        }
        SymbolIcon {
            symbol: "chevron.right"
            size: 10
            font.weight: Font.DemiBold
            color: Theme.tertiaryText
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
    Accessible.name: root.location.name !== undefined ? root.location.name : ""
}
