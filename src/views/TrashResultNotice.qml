pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// Tells, without stopping anything, that a move to the Trash left files behind: how many moved,
// how many did not, and on request each file with the reason. It shows the operations' last
// report and stays until dismissed (its close button, or Escape while it has the focus) or
// replaced by the next move's outcome.
FocusScope {
    id: root

    readonly property var operations: RavelinthViewModel.operations
    readonly property var failures: operations.reportFailures
    readonly property int movedCount: operations.reportMovedCount
    property bool showDetails: false

    function files(count) {
        return count === 1 ? "1 file" : count + " files"
    }
    readonly property string summary: movedCount > 0
        ? "Moved " + files(movedCount) + " to the Trash. " + failures.length
          + " could not be moved."
        : files(failures.length) + " could not be moved to the Trash."

    function dismiss() {
        operations.dismissTrashReport()
    }

    visible: operations.hasTrashReport
    implicitHeight: card.implicitHeight
    // A new report starts folded, whatever the last one showed.
    Connections {
        target: root.operations
        function onTrashReportChanged() { root.showDetails = false }
    }

    Accessible.role: Accessible.AlertMessage
    Accessible.name: summary
    Keys.onEscapePressed: dismiss()

    component NoticeButton: Button {
        id: noticeButton
        implicitHeight: 26
        leftPadding: 10
        rightPadding: 10
        focusPolicy: Qt.StrongFocus
        Accessible.name: text
        contentItem: Text {
            text: noticeButton.text
            font.pixelSize: 12
            font.weight: Font.Medium
            color: Theme.accent
            verticalAlignment: Text.AlignVCenter
        }
        background: Rectangle {
            radius: 6
            color: noticeButton.hovered ? Theme.withOpacity(Theme.accent, 0.1) : "transparent"
            border.width: noticeButton.visualFocus ? 2 : 0
            border.color: Theme.withOpacity(Theme.accent, 0.5)
        }
    }

    Rectangle {
        id: card
        anchors.fill: parent
        implicitHeight: column.implicitHeight + 24
        radius: 10
        color: Theme.textBackground
        border.width: 1
        border.color: Theme.withOpacity(Theme.orange, 0.45)
        // A soft edge under the card so that it reads as lying above the list.
        Rectangle {
            z: -1
            anchors.fill: parent
            anchors.topMargin: 2
            anchors.bottomMargin: -3
            radius: parent.radius + 1
            color: Qt.rgba(0, 0, 0, 0.08)
        }
        // Clicks on the card stay on it, away from the rows below.
        MouseArea {
            anchors.fill: parent
            onClicked: root.forceActiveFocus()
        }

        ColumnLayout {
            id: column
            x: 14
            y: 12
            width: parent.width - 28
            spacing: 8

            RowLayout {
                Layout.fillWidth: true
                spacing: 10
                SymbolIcon {
                    symbol: "exclamationmark.triangle.fill"
                    size: 20
                    color: Theme.orange
                }
                Text {
                    objectName: "trashResultSummary"
                    Layout.fillWidth: true
                    text: root.summary
                    wrapMode: Text.Wrap
                    font.pixelSize: 13
                    font.weight: Font.Medium
                    color: Theme.primaryText
                }
                NoticeButton {
                    objectName: "trashResultDetailsButton"
                    text: root.showDetails ? "Hide Details" : "Show Details"
                    onClicked: root.showDetails = !root.showDetails
                }
                AbstractButton {
                    id: closeButton
                    // A screen reader's Press is the click; a bare button does not answer it.
                    Accessible.onPressAction: closeButton.clicked()
                    objectName: "trashResultClose"
                    implicitWidth: 24
                    implicitHeight: 24
                    hoverEnabled: true
                    focusPolicy: Qt.StrongFocus
                    Accessible.name: "Dismiss"
                    onClicked: root.dismiss()
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

            ListView {
                id: details
                objectName: "trashResultDetails"
                readonly property real tallest: 180
                visible: root.showDetails
                Layout.fillWidth: true
                Layout.leftMargin: 30
                clip: true
                spacing: 6
                boundsBehavior: Flickable.StopAtBounds
                model: root.failures
                Layout.preferredHeight: Math.min(contentHeight, tallest)
                // Shown only when the list is cut, so that a short list reads as a plain list.
                ScrollBar.vertical: ScrollBar {
                    policy: details.contentHeight > details.tallest ? ScrollBar.AlwaysOn
                                                                    : ScrollBar.AlwaysOff
                }
                delegate: Column {
                    id: failure
                    required property var modelData
                    width: details.width - 12
                    spacing: 1
                    Text {
                        width: parent.width
                        text: failure.modelData.name
                        elide: Text.ElideMiddle
                        font.pixelSize: 12
                        font.weight: Font.Medium
                        color: Theme.primaryText
                    }
                    Text {
                        width: parent.width
                        text: failure.modelData.reason
                        wrapMode: Text.Wrap
                        font.pixelSize: 11
                        color: Theme.secondaryText
                    }
                }
            }
        }
    }
}
