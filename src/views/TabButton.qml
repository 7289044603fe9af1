pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth

// One tab of the header bar: icon and title, tinted and filled when selected, greyed while the
// pointer rests on it.
Item {
    id: root
    property string title
    property string icon
    property bool isSelected: false
    property var action: null
    readonly property bool isHovered: hover.hovered

    readonly property color foreground: isSelected ? Theme.accent : Theme.primaryText

    signal clicked

    function trigger() {
        if (typeof action === "function")
            action()
        clicked()
    }

    implicitWidth: row.implicitWidth + 28
    implicitHeight: row.implicitHeight + 16
    activeFocusOnTab: true

    Accessible.role: Accessible.PageTab
    Accessible.name: title
    Accessible.selected: isSelected
    Accessible.onPressAction: trigger()
    Keys.onSpacePressed: trigger()
    Keys.onReturnPressed: trigger()
    Keys.onEnterPressed: trigger()

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: root.isSelected ? Theme.withOpacity(Theme.accent, 0.15)
               : root.isHovered ? Theme.withOpacity(Theme.gray, 0.1) : "transparent"
        border.width: root.activeFocus ? 2 : 0
        border.color: Theme.withOpacity(Theme.accent, 0.5)
        Behavior on color { ColorAnimation { duration: 200; easing.type: Easing.InOutQuad } }
    }

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 6
        SymbolIcon {
            symbol: root.icon
            size: 14
            color: root.foreground
            anchors.verticalCenter: parent.verticalCenter
            Behavior on color { ColorAnimation { duration: 200; easing.type: Easing.InOutQuad } }
        }
        Text {
            text: root.title
            font.pixelSize: 13
            font.weight: Font.Medium
            color: root.foreground
            anchors.verticalCenter: parent.verticalCenter
            Behavior on color { ColorAnimation { duration: 200; easing.type: Easing.InOutQuad } }
        }
    }

    HoverHandler {
        id: hover
    }
    TapHandler {
        onTapped: root.trigger()
    }
}
