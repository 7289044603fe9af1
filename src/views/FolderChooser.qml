import QtQuick
import Ravelinth
import QtQuick.Dialogs

// The folder chooser that answers the finder's requests: folders only, one at a time, starting
// where the request says. Every request gets exactly one answer, "" when the user cancels.
FolderDialog {
    id: root
    property bool awaitingAnswer: false

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

    // The chooser reports the highlighted row as the selection even when the user never picked
    // it; the user's choice is the folder they opened unless they clicked a row inside it.
    onAccepted: {
        const shown = localPath(currentFolder)
        const picked = localPath(selectedFolder)
        answer(picked !== "" ? picked : shown)
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
