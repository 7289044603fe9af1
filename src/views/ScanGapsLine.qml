pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// Under the scanner after a scan that could not cover everything: "3 folders could not be read"
// and "1 drive was not entered", each opening the list of what it counts. Totals that leave
// something out say so instead of passing for complete.
RowLayout {
    id: root
    readonly property ScanGaps gaps: RavelinthViewModel.gaps
    readonly property bool shown: gaps.unreadableSummary !== "" || gaps.skippedSummary !== ""
    visible: shown
    spacing: 6

    function showList(title, lines) {
        listPopup.title = title
        listPopup.lines = lines
        listPopup.open()
    }

    component GapButton: AbstractButton {
        id: gapButton
        property string summary
        visible: summary !== ""
        text: summary
        focusPolicy: Qt.StrongFocus
        Accessible.role: Accessible.Button
        Accessible.name: summary
        Accessible.description: "Shows the list"
        Layout.alignment: Qt.AlignVCenter
        implicitWidth: gapText.implicitWidth + 8
        implicitHeight: gapText.implicitHeight + 4
        contentItem: Text {
            id: gapText
            text: gapButton.summary
            font.pixelSize: Theme.captionSize
            font.underline: gapButton.hovered || gapButton.visualFocus
            color: Theme.readable(Theme.orange, Theme.material, 4.5)
            horizontalAlignment: Text.AlignHCenter
        }
        FocusRing {
            shown: gapButton.visualFocus
            radius: 4
        }
    }

    SymbolIcon {
        Layout.alignment: Qt.AlignVCenter
        symbol: "exclamationmark.triangle.fill"
        size: 13
        color: Theme.orange
    }
    GapButton {
        objectName: "unreadableFoldersButton"
        summary: root.gaps.unreadableSummary
        onClicked: root.showList("Folders That Could Not Be Read", root.gaps.unreadablePaths)
    }
    GapButton {
        objectName: "skippedMountsButton"
        summary: root.gaps.skippedSummary
        onClicked: root.showList("Drives That Were Not Entered", root.gaps.skippedMounts)
    }
    Item {
        Layout.fillWidth: true
    }

    Popup {
        id: listPopup
        objectName: "scanGapsList"
        property string title
        property var lines: []
        parent: Overlay.overlay
        x: Math.round((parent.width - width) / 2)
        y: Math.round((parent.height - height) / 2)
        width: Math.min(620, parent.width - 40)
        height: Math.min(420, parent.height - 40)
        modal: true
        dim: true
        focus: true
        padding: 16
        closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
        onOpened: closeButton.forceActiveFocus()
        background: Rectangle {
            radius: 10
            color: Theme.windowBackground
            border.color: Theme.divider
        }
        ColumnLayout {
            anchors.fill: parent
            spacing: 8
            Accessible.role: Accessible.Dialog
            Accessible.name: listPopup.title
            Text {
                text: listPopup.title
                font.pixelSize: Theme.headlineSize
                font.bold: true
                color: Theme.primaryText
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            ListView {
                id: lineList
                objectName: "scanGapsLines"
                Layout.fillWidth: true
                Layout.fillHeight: true
                clip: true
                model: listPopup.lines
                activeFocusOnTab: true
                keyNavigationEnabled: true
                Accessible.role: Accessible.List
                Accessible.name: listPopup.title
                ScrollBar.vertical: ScrollBar {}
                delegate: Text {
                    required property string modelData
                    required property int index
                    width: lineList.width
                    text: modelData
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                    font.pixelSize: Theme.bodySize
                    font.family: Theme.monospaceFamily
                    color: Theme.primaryText
                    topPadding: 2
                    bottomPadding: 2
                    Accessible.role: Accessible.ListItem
                    Accessible.name: modelData
                }
            }
            Text {
                visible: listPopup.lines.length === 1000
                text: "Only the first 1,000 are listed."
                font.pixelSize: Theme.captionSize
                color: Theme.secondaryText
            }
            Button {
                id: closeButton
                objectName: "scanGapsClose"
                Layout.alignment: Qt.AlignRight
                text: "Close"
                Accessible.name: text
                onClicked: listPopup.close()
            }
        }
    }
}
