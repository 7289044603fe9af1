pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// A quick look at one file, over the window: the picture itself when Qt can decode it, otherwise
// what the list knows of the file. Space, like the key that opened it, or Escape closes it.
Popup {
    id: root
    // FileListModel.detailsAt() of the file shown.
    property var details: ({})
    readonly property bool showsImage: details.isImage === true && picture.status === Image.Ready

    function show(row) {
        details = RavelinthViewModel.fileList.detailsAt(row)
        if (details.name !== undefined)
            open()
    }

    parent: Overlay.overlay
    x: Math.round((parent.width - width) / 2)
    y: Math.round((parent.height - height) / 2)
    width: Math.min(parent.width - 80, showsImage ? Math.max(420, picture.implicitWidth + 32) : 460)
    modal: true
    dim: true
    focus: true
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutside
    padding: 16
    onClosed: picture.source = ""
    Overlay.modal: Rectangle {
        color: "#40000000"
    }
    background: Rectangle {
        radius: 12
        color: Theme.windowBackground
        border.width: 1
        border.color: Theme.divider
    }
    contentItem: ColumnLayout {
        spacing: 12
        focus: true
        Accessible.role: Accessible.Dialog
        Accessible.name: "Quick Look: " + (root.details.name ?? "")
        Keys.onSpacePressed: root.close()

        Image {
            id: picture
            objectName: "previewImage"
            Layout.alignment: Qt.AlignHCenter
            Layout.maximumWidth: root.parent.width - 112
            Layout.maximumHeight: root.parent.height - 220
            visible: root.showsImage
            source: root.opened && root.details.isImage === true ? root.details.url : ""
            asynchronous: true
            fillMode: Image.PreserveAspectFit
            // Decoded no larger than it can be shown: a photo of 50 megapixels stays light.
            sourceSize.width: 1600
            sourceSize.height: 1200
        }
        Text {
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            objectName: "previewName"
            Layout.fillWidth: true
            text: root.details.name ?? ""
            font.pixelSize: Theme.title2Size
            font.bold: true
            color: Theme.primaryText
            elide: Text.ElideMiddle
        }
        ColumnLayout {
            objectName: "previewDetails"
            Layout.fillWidth: true
            spacing: 6
            Repeater {
                model: [
                    { label: "Size", value: root.details.sizeText ?? "" },
                    { label: "Category", value: root.details.category ?? "" },
                    { label: "Modified", value: root.details.modifiedMSecs !== undefined
                          ? TextFormat.relativeDate(root.details.modifiedMSecs) : "" },
                    { label: "Where", value: root.details.folder ?? "" }
                ]
                delegate: RowLayout {
                    id: detailRow
                    required property var modelData
                    Layout.fillWidth: true
                    spacing: 12
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        Layout.preferredWidth: 72
                        text: detailRow.modelData.label
                        font.pixelSize: Theme.bodySize
                        color: Theme.secondaryText
                        horizontalAlignment: Text.AlignRight
                    }
                    Text {
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                        Layout.fillWidth: true
                        text: detailRow.modelData.value
                        font.pixelSize: Theme.bodySize
                        color: Theme.primaryText
                        elide: Text.ElideMiddle
                    }
                }
            }
        }
    }
}
