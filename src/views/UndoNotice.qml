pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// After a move to the Trash: what moved, and a way back. It goes by itself after ten seconds, or
// when the next scan starts; Edit ▸ Undo Move to Trash still reaches the move after that.
FocusScope {
    id: root

    readonly property var undo: RavelinthViewModel.undo
    readonly property int shownFor: 10000

    visible: undo.noticeText !== ""
    implicitHeight: card.implicitHeight
    Accessible.role: Accessible.AlertMessage
    Accessible.name: undo.noticeText
    Keys.onEscapePressed: undo.dismissNotice()

    Timer {
        running: root.visible
        interval: root.shownFor
        onTriggered: root.undo.dismissNotice()
    }
    Connections {
        target: RavelinthViewModel.scan
        function onStarting() { root.undo.dismissNotice() }
    }

    Rectangle {
        id: card
        anchors.fill: parent
        implicitHeight: row.implicitHeight + 20
        radius: 10
        color: Theme.textBackground
        border.width: 1
        border.color: Theme.withOpacity(Theme.green, 0.5)
        Rectangle {
            z: -1
            anchors.fill: parent
            anchors.topMargin: 2
            anchors.bottomMargin: -3
            radius: parent.radius + 1
            color: Qt.rgba(0, 0, 0, 0.08)
        }
        MouseArea {
            anchors.fill: parent
            onClicked: root.forceActiveFocus()
        }
        RowLayout {
            id: row
            x: 14
            y: 10
            width: parent.width - 28
            spacing: 10
            SymbolIcon {
                symbol: "checkmark.circle.fill"
                size: 20
                color: Theme.green
            }
            Text {
                objectName: "undoNoticeText"
                Layout.fillWidth: true
                text: root.undo.noticeText
                wrapMode: Text.Wrap
                font.pixelSize: 13
                font.weight: Font.Medium
                color: Theme.primaryText
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Button {
                id: undoButton
                objectName: "undoNoticeButton"
                text: "Undo"
                enabled: !root.undo.isUndoing
                implicitHeight: 26
                leftPadding: 12
                rightPadding: 12
                focusPolicy: Qt.StrongFocus
                Accessible.name: "Undo Move to Trash"
                onClicked: root.undo.undo()
                contentItem: Text {
                    text: undoButton.text
                    font.pixelSize: 12
                    font.weight: Font.DemiBold
                    color: Theme.accent
                    verticalAlignment: Text.AlignVCenter
                }
                background: Rectangle {
                    radius: 6
                    color: undoButton.hovered ? Theme.withOpacity(Theme.accent, 0.1) : "transparent"
                    border.width: undoButton.visualFocus ? 2 : 1
                    border.color: Theme.withOpacity(Theme.accent, undoButton.visualFocus ? 0.5 : 0.3)
                }
            }
            AbstractButton {
                id: closeButton
                objectName: "undoNoticeClose"
                implicitWidth: 24
                implicitHeight: 24
                hoverEnabled: true
                focusPolicy: Qt.StrongFocus
                Accessible.name: "Dismiss"
                Accessible.onPressAction: closeButton.clicked()
                onClicked: root.undo.dismissNotice()
                contentItem: SymbolIcon {
                    symbol: "xmark.circle.fill"
                    size: 18
                    color: closeButton.hovered ? Theme.secondaryText : Theme.tertiaryText
                }
                background: Rectangle {
                    radius: 12
                    color: "transparent"
                    border.width: closeButton.visualFocus ? 2 : 0
                    border.color: Theme.withOpacity(Theme.accent, 0.5)
                }
            }
        }
    }
}
