pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// A flat button of the window's toolbar: icon beside label, tinted, with a soft fill under the
// pointer. All have the same width so the toolbar reads as one even row.
AbstractButton {
    id: root
    property string symbol
    property color tint: Theme.primaryText

    implicitWidth: 88
    implicitHeight: 34
    hoverEnabled: true
    focusPolicy: Qt.TabFocus
    // Faded as a whole, icon and label alike, so a button with nothing to act on reads as off.
    opacity: enabled ? 1.0 : 0.35
    Accessible.role: Accessible.Button
    Accessible.name: text
    // A screen reader's Press is the click.
    Accessible.onPressAction: if (enabled) clicked()

    contentItem: Item {
        Row {
            anchors.centerIn: parent
            spacing: 6
            SymbolIcon {
                symbol: root.symbol
                size: 17
                color: root.tint
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                text: root.text
                font.pixelSize: 13
                color: root.tint === Theme.primaryText ? Theme.primaryText : root.tint
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }

    background: Rectangle {
        radius: 6
        color: root.down ? Theme.withOpacity(Theme.gray, 0.25)
               : root.hovered ? Theme.withOpacity(Theme.gray, 0.12) : "transparent"
        border.width: root.visualFocus ? 2 : 0
        border.color: Theme.withOpacity(Theme.accent, 0.5)
    }
}
