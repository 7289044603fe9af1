import QtQuick
import Ravelinth
import QtQuick.Layouts

// The strip under the scan controls while a scan runs: a busy bar, the status text, and the
// file being examined beside the running counts. `scanState` is the view model's scanState map
// (named so because every Item already has a `state`).
Rectangle {
    id: root
    property var scanState: ({ kind: "idle", statusMessage: "" })

    readonly property string currentFileName:
        AppContext.shortenedFileName(AppContext.lastPathComponent(scanState.currentFile || ""))
    readonly property string filesText: AppContext.formatGroupedInteger(scanState.filesScanned || 0)
    readonly property string bytesText: AppContext.formatByteCount(scanState.bytesScanned || 0)

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
                objectName: "statusMessage"
                text: root.scanState.statusMessage || ""
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
