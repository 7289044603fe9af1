pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Dialogs

// The folder chooser that answers the finder's requests: folders only, one at a time, starting
// where the request says. Every request gets exactly one answer, "" when the user cancels.
//
// The chooser highlights the first row of every folder it shows and would answer with that row
// although the user never picked it. So the highlight is dropped whenever a folder is shown:
// "Open" then chooses the folder being shown, or the row the user clicked.
FolderDialog {
    id: root
    property bool awaitingAnswer: false
    property var rowList: null

    function localPath(url) {
        const text = url.toString()
        return text.startsWith("file://") ? decodeURIComponent(text.substring(7)) : ""
    }

    function answer(path) {
        if (!awaitingAnswer)
            return
        awaitingAnswer = false
        AppContext.finder.completeFolderSelection(path)
    }

    function findRowList(item) {
        if (!item)
            return null
        if (item.objectName === "folderDialogListView")
            return item
        for (let i = 0; i < item.children.length; ++i) {
            const found = findRowList(item.children[i])
            if (found)
                return found
        }
        return null
    }

    function forgetHighlight() {
        if (!rowList && parentWindow)
            rowList = findRowList(parentWindow.contentItem.parent || parentWindow.contentItem)
        if (rowList)
            rowList.currentIndex = -1
        selectedFolder = currentFolder
    }

    onCurrentFolderChanged: Qt.callLater(forgetHighlight)
    onVisibleChanged: if (visible) Qt.callLater(forgetHighlight)
    Connections {
        target: root.rowList
        function onCountChanged() { Qt.callLater(root.forgetHighlight) }
    }

    onAccepted: {
        const picked = localPath(selectedFolder)
        answer(picked !== "" ? picked : localPath(currentFolder))
    }
    onRejected: answer("")

    Connections {
        target: AppContext.finder
        function onFolderSelectionRequested(title, initialPath) {
            root.answer("")
            root.title = title
            if (initialPath !== "")
                root.currentFolder = "file://" + encodeURI(initialPath)
            root.awaitingAnswer = true
            root.open()
        }
    }
}
