pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// One preset folder as a tinted capsule; pressing it runs `action`.
Item {
    id: root
    property var location: ({ name: "", path: "", icon: "folder", color: "#007AFF" })
    property var action: null
    readonly property bool isHovered: hover.hovered
    readonly property color tint: location.color

    signal clicked

    function trigger() {
        if (typeof action === "function")
            action()
        clicked()
    }

    implicitWidth: row.implicitWidth + 24
    implicitHeight: row.implicitHeight + 12
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    // "Scan Home", not "Home": the sidebar has a row of that name.
    Accessible.name: "Scan " + location.name
    Accessible.onPressAction: trigger()
    Keys.onSpacePressed: trigger()
    Keys.onReturnPressed: trigger()
    Keys.onEnterPressed: trigger()

    ToolTip.visible: isHovered
    ToolTip.delay: 800
    ToolTip.text: location.path

    Rectangle {
        anchors.fill: parent
        radius: 6
        color: Theme.withOpacity(root.tint, root.isHovered ? 0.2 : 0.1)
        border.width: root.activeFocus ? 2 : 1
        border.color: root.activeFocus ? Theme.withOpacity(Theme.accent, 0.6)
                                       : Theme.withOpacity(root.tint, 0.3)
        Behavior on color { ColorAnimation { duration: 150 } }
    }

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 6
        SymbolIcon {
            symbol: root.location.icon
            size: 14
            color: root.tint
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: root.location.name
            font.pixelSize: 12
            font.weight: Font.Medium
            color: Theme.primaryText
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    HoverHandler {
        id: hover
        cursorShape: Qt.PointingHandCursor
    }
    TapHandler {
        onTapped: root.trigger()
    }
}
