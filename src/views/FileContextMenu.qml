pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// The menu of a right-clicked row. `selection` holds the identifiers the click concerns (the
// whole selection when the row is selected, else the row alone) and `file` the clicked row's.
// Every entry acts on the files of `selection` still in the list, or on `file` when none is.
Menu {
    id: root
    property string file
    property var selection: []

    // The files of the list named by `selection`, in list order.
    readonly property var selectedFiles: RavelinthViewModel.operations.existing(selection)
    readonly property var targets: selectedFiles.length > 0 ? selectedFiles : [file]

    signal acted(string entry)

    function showInFileManager() {
        RavelinthViewModel.operations.reveal(targets)
        acted("reveal")
    }
    function openFiles() {
        RavelinthViewModel.operations.open(targets)
        acted("open")
    }
    function copyPath() {
        // Only the first file's path, by design; nothing when the selection names no file.
        RavelinthViewModel.operations.copyPath(selectedFiles)
        acted("copy")
    }
    function moveToTrash() {
        RavelinthViewModel.operations.requestMoveToTrash(targets)
        acted("trash")
    }

    component Entry: MenuItem {
        id: entry
        property string symbol
        implicitHeight: 26
        contentItem: Row {
            spacing: 8
            leftPadding: 4
            SymbolIcon {
                symbol: entry.symbol
                size: 15
                color: entry.highlighted ? "white" : Theme.primaryText
                anchors.verticalCenter: parent.verticalCenter
            }
            Text {
                text: entry.text
                font.pixelSize: 13
                color: entry.highlighted ? "white" : Theme.primaryText
                anchors.verticalCenter: parent.verticalCenter
            }
        }
        background: Rectangle {
            radius: 4
            color: entry.highlighted ? Theme.accent : "transparent"
        }
    }

    Entry {
        objectName: "showInFileManager"
        text: AppContext.words("Show in Finder")
        symbol: "folder"
        onTriggered: root.showInFileManager()
    }
    Entry {
        objectName: "open"
        text: "Open"
        symbol: "arrow.up.forward.app"
        onTriggered: root.openFiles()
    }
    Entry {
        objectName: "copyPath"
        text: "Copy Path"
        symbol: "doc.on.doc"
        onTriggered: root.copyPath()
    }
    Entry {
        objectName: "excludeFolder"
        text: "Exclude Folder from Scans"
        symbol: "eye.slash"
        onTriggered: {
            RavelinthViewModel.operations.excludeFolderOf(root.file)
            root.acted("exclude")
        }
    }
    MenuSeparator {}
    Entry {
        objectName: "moveToTrash"
        text: "Move to Trash"
        symbol: "trash"
        onTriggered: root.moveToTrash()
    }
}
