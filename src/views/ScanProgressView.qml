pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Layouts

// The strip under the scan controls while a scan runs: a busy bar, the status text, and the
// file being examined beside the running counts, all taken from the running scan's state.
Rectangle {
    id: root
    property string statusMessage
    property string currentFile
    property real filesScanned: 0
    property real bytesScanned: 0

    readonly property string currentFileName:
        TextFormat.shortenedFileName(TextFormat.lastPathComponent(currentFile))
    readonly property string filesText: TextFormat.groupedInteger(filesScanned)
    readonly property string bytesText: TextFormat.byteCount(bytesScanned, TextFormat.binaryUnits)

    implicitHeight: column.implicitHeight + 24
    radius: 8
    color: Theme.withOpacity(Theme.accent, 0.05)
    border.width: 1
    border.color: Theme.withOpacity(Theme.accent, 0.2)

    ColumnLayout {
        id: column
        anchors.fill: parent
        anchors.margins: 12
        spacing: 12

        // An indeterminate bar: a segment of the accent colour sweeping along a faint track.
        Rectangle {
            id: track
            Layout.fillWidth: true
            implicitHeight: 4
            radius: 2
            color: Theme.withOpacity(Theme.accent, 0.15)
            clip: true
            Rectangle {
                id: sweep
                width: track.width * 0.3
                height: parent.height
                radius: 2
                color: Theme.accent
                NumberAnimation on x {
                    from: -sweep.width
                    to: track.width
                    duration: 1200
                    loops: Animation.Infinite
                    running: root.visible
                    easing.type: Easing.InOutQuad
                }
            }
        }

        RowLayout {
            spacing: 6
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                objectName: "statusMessage"
                text: root.statusMessage
                font.pixelSize: 12
                color: Theme.secondaryText
                Layout.fillWidth: true
                elide: Text.ElideRight
            }
        }

        RowLayout {
            spacing: 16
            SymbolIcon {
                symbol: "doc.text.magnifyingglass"
                size: 14
                color: Theme.accent
            }
            Text {
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                objectName: "currentFileName"
                text: root.currentFileName
                font.family: Theme.monospaceFamily
                font.pixelSize: 12
                color: Theme.secondaryText
                maximumLineCount: 1
                elide: Text.ElideRight
                Layout.fillWidth: true
            }
            StatPill {
                objectName: "filesPill"
                icon: "doc.fill"
                value: root.filesText
            }
            StatPill {
                objectName: "bytesPill"
                icon: "arrow.down.doc.fill"
                value: root.bytesText
            }
        }
    }
}
