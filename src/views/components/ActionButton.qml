pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// The program's styled button: an icon (or a spinner while loading) and a title on a rounded
// background that depends on `style`: "primary", "secondary", "destructive" or "plain".
Item {
    id: root
    property string title
    property string icon
    property string style: "primary"
    property bool isLoading: false
    property var action: null
    readonly property bool hovered: hover.hovered
    readonly property bool pressed: tap.pressed

    signal clicked

    function trigger() {
        if (!enabled)
            return
        if (typeof action === "function")
            action()
        clicked()
    }

    readonly property color foreground: style === "primary" ? "white"
                                       : style === "destructive" ? Theme.red
                                       : style === "plain" ? Theme.accent : Theme.primaryText

    implicitWidth: row.implicitWidth + 32
    implicitHeight: row.implicitHeight + 20
    opacity: enabled ? (pressed ? 0.8 : 1.0) : 0.5
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.onPressAction: trigger()
    Keys.onSpacePressed: trigger()
    Keys.onReturnPressed: trigger()
    Keys.onEnterPressed: trigger()

    Rectangle {
        id: background
        anchors.fill: parent
        radius: 8
        color: root.style === "destructive" ? Theme.withOpacity(Theme.red, 0.15) : "transparent"
        border.width: root.style === "secondary" || root.style === "destructive" ? 1 : 0
        border.color: root.style === "destructive" ? Theme.withOpacity(Theme.red, 0.3)
                                                   : Theme.withOpacity(Theme.gray, 0.3)
    }
    Rectangle {
        anchors.fill: parent
        radius: 8
        visible: root.style === "primary"
        gradient: Gradient {
            orientation: Gradient.Horizontal
            GradientStop { position: 0; color: Theme.accentGradientStart }
            GradientStop { position: 1; color: Theme.accentGradientEnd }
        }
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        radius: 10
        color: "transparent"
        border.width: 2
        border.color: Theme.withOpacity(Theme.accent, 0.5)
        visible: root.activeFocus
    }

    Row {
        id: row
        anchors.centerIn: parent
        spacing: 6
        BusyIndicator {
            visible: root.isLoading
            running: root.isLoading
            width: 16
            height: 16
            anchors.verticalCenter: parent.verticalCenter
        }
        SymbolIcon {
            visible: !root.isLoading && root.icon !== ""
            symbol: root.icon
            size: 15
            color: root.foreground
            anchors.verticalCenter: parent.verticalCenter
        }
        Text {
            text: root.title
            font.pixelSize: 13
            font.weight: Font.Medium
            color: root.foreground
            anchors.verticalCenter: parent.verticalCenter
        }
    }

    HoverHandler {
        id: hover
        cursorShape: Qt.PointingHandCursor
    }
    TapHandler {
        id: tap
        onTapped: root.trigger()
    }
}
