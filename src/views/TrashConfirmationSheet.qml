pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// Asks before files go to the Trash: how many, how large together, the first few names. It
// follows the operations' pending request, so whatever asked for the move (toolbar, keys, context
// menu) meets the same question, and what is confirmed is the request shown.
//
// Cancel is the default: it has the focus when the sheet opens, and Return presses it wherever
// the focus is, so a key held down too long never empties a folder. Only a click or Space on
// "Move to Trash" moves the files.
Dialog {
    id: root

    readonly property var operations: RavelinthViewModel.operations
    readonly property int count: operations.pendingCount
    readonly property int moreCount: Math.max(0, count - operations.pendingNames.length)
    // Also the sheet's name for screen readers; the header shows it beside the icon instead.
    title: count === 1 ? "Move 1 file to the Trash?" : "Move " + count + " files to the Trash?"

    function follow() {
        if (operations.hasPendingMove)
            open()
        else
            close()
    }
    function confirm() {
        operations.confirmPendingMove()
    }
    function cancel() {
        operations.cancelPendingMove()
    }

    Component.onCompleted: follow()
    Connections {
        target: root.operations
        function onPendingMoveChanged() { root.follow() }
    }
    // Escape, or anything else that closes the sheet, leaves the files where they are.
    onClosed: cancel()
    onOpened: cancelButton.forceActiveFocus()

    modal: true
    dim: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(440, parent.width - 80)
    padding: 24
    bottomPadding: 20
    Overlay.modal: Rectangle {
        color: "#40000000"
    }
    background: Rectangle {
        radius: 12
        color: Theme.windowBackground
        border.width: 1
        border.color: Theme.withOpacity(Theme.gray, 0.35)
    }

    header: null
    footer: null

    Shortcut {
        sequences: ["Return", "Enter"]
        enabled: root.opened
        onActivated: root.cancel()
    }

    component SheetButton: Button {
        id: sheetButton
        property color fill
        property color foreground
        property color outline: "transparent"
        implicitHeight: 32
        leftPadding: 16
        rightPadding: 16
        Accessible.name: text
        contentItem: Text {
            text: sheetButton.text
            font.pixelSize: 13
            font.weight: Font.Medium
            color: sheetButton.foreground
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            radius: 8
            color: sheetButton.fill
            opacity: sheetButton.down ? 0.8 : 1.0
            border.width: 1
            border.color: sheetButton.outline
            Rectangle {
                anchors.fill: parent
                anchors.margins: -3
                radius: 10
                color: "transparent"
                border.width: 2
                border.color: Theme.withOpacity(Theme.accent, 0.5)
                visible: sheetButton.visualFocus
            }
        }
    }

    contentItem: ColumnLayout {
        spacing: 14

        RowLayout {
            spacing: 14
            Rectangle {
                Layout.alignment: Qt.AlignTop
                implicitWidth: 44
                implicitHeight: 44
                radius: 22
                color: Theme.withOpacity(Theme.red, 0.12)
                SymbolIcon {
                    anchors.centerIn: parent
                    symbol: "trash"
                    size: 24
                    color: Theme.red
                }
            }
            ColumnLayout {
                Layout.fillWidth: true
                spacing: 4
                Text {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    objectName: "trashConfirmationTitle"
                    Layout.fillWidth: true
                    text: root.title
                    wrapMode: Text.Wrap
                    font.pixelSize: 15
                    font.bold: true
                    color: Theme.primaryText
                }
                Text {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    objectName: "trashConfirmationSize"
                    Layout.fillWidth: true
                    text: TextFormat.byteCount(root.operations.pendingSize, TextFormat.binaryUnits) + " in total. "
                          + "You can put them back from the Trash."
                    wrapMode: Text.Wrap
                    font.pixelSize: 12
                    color: Theme.secondaryText
                }
                Text {
                    readonly property int linked: root.operations.pendingLinkedCount
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    objectName: "trashConfirmationLinked"
                    Layout.fillWidth: true
                    visible: linked > 0
                    text: (linked === 1 ? "1 file has" : linked + " files have")
                          + " other names (hard links): moving " + (linked === 1 ? "it" : "them")
                          + " to the Trash frees no space while the other names exist."
                    wrapMode: Text.Wrap
                    font.pixelSize: 12
                    color: Theme.secondaryText
                }
            }
        }

        Rectangle {
            Layout.fillWidth: true
            implicitHeight: names.implicitHeight + 16
            radius: 8
            color: Theme.textBackground
            border.width: 1
            border.color: Theme.divider
            Column {
                id: names
                objectName: "trashConfirmationNames"
                x: 12
                y: 8
                width: parent.width - 24
                spacing: 4
                Repeater {
                    model: root.operations.pendingNames
                    Row {
                        id: nameRow
                        required property string modelData
                        width: names.width
                        spacing: 6
                        SymbolIcon {
                            symbol: "doc"
                            size: 14
                            color: Theme.secondaryText
                            anchors.verticalCenter: parent.verticalCenter
                        }
                        Text {
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                            width: nameRow.width - 20
                            text: nameRow.modelData
                            elide: Text.ElideMiddle
                            font.pixelSize: 13
                            color: Theme.primaryText
                        }
                    }
                }
                Text {
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                    objectName: "trashConfirmationMore"
                    visible: root.moreCount > 0
                    leftPadding: 20
                    text: "and " + root.moreCount + " more"
                    font.pixelSize: 12
                    color: Theme.secondaryText
                }
            }
        }

        RowLayout {
            Layout.topMargin: 4
            spacing: 10
            Item {
                Layout.fillWidth: true
            }
            SheetButton {
                objectName: "trashConfirmationMove"
                text: "Move to Trash"
                fill: Theme.withOpacity(Theme.red, 0.12)
                outline: Theme.withOpacity(Theme.red, 0.3)
                foreground: Theme.red
                onClicked: root.confirm()
            }
            SheetButton {
                id: cancelButton
                objectName: "trashConfirmationCancel"
                text: "Cancel"
                focus: true
                fill: Theme.accent
                foreground: "white"
                onClicked: root.cancel()
            }
        }
    }
}
