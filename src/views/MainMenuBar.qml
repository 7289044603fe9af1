pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// The main window's menus. Every command announces itself on the notification centre, for
// whatever else listens, and then does what its title says.
MenuBar {
    id: root
    // The window's content, whose tabs and fields the commands reach.
    required property ContentView content
    // The text field Edit's Cut, Copy and Paste act on; the window keeps it.
    property Item editedField: null
    signal exportRequested()

    function post(name, object) {
        if (object === undefined)
            AppContext.notifications.post(name)
        else
            AppContext.notifications.post(name, object)
    }

    function isOpen() {
        for (let i = 0; i < count; ++i) {
            if (menuAt(i).visible)
                return true
        }
        return false
    }

    function editField(edit) {
        const field = editedField
        if (!field)
            return
        field.forceActiveFocus()
        edit(field)
    }

    function quickScan(key) {
        post("quickScan", key)
        if (RavelinthViewModel.scan.isScanning)
            return
        const location = AppContext.quickAccessLocations.find(l => l.name.toLowerCase() === key)
        if (!location)
            return
        RavelinthViewModel.scan.path = location.path
        RavelinthViewModel.scan.start()
        content.selectedTab = "scanner"
    }

    // The "&" marks the mnemonic; a screen reader reads the title without it.
    delegate: MenuBarItem {
        Accessible.name: text.replace("&", "")
    }
    Menu {
        title: "&File"
        delegate: CommandMenuItem {}
        Action {
            text: "New Scan"
            shortcut: "Ctrl+N"
            onTriggered: {
                root.post("startNewScan")
                RavelinthViewModel.scan.reset()
                root.content.focusPathField()
            }
        }
        Action {
            text: "Browse Folder..."
            shortcut: "Ctrl+O"
            onTriggered: {
                root.post("browseFolder")
                root.content.selectedTab = "scanner"
                RavelinthViewModel.scan.browse()
            }
        }
        Action {
            text: "Export List..."
            enabled: RavelinthViewModel.fileList.count > 0
            onTriggered: {
                root.post("exportList")
                root.exportRequested()
            }
        }
        MenuSeparator {}
        Action {
            text: "Settings..."
            shortcut: "Ctrl+,"
            onTriggered: RavelinthViewModel.showSettings = true
        }
        MenuSeparator {}
        Action {
            text: "Quit"
            shortcut: "Ctrl+Q"
            onTriggered: Qt.quit()
        }
    }
    Menu {
        id: editMenu
        title: "&Edit"
        delegate: CommandMenuItem {}
        readonly property Item field: root.editedField
        // Puts back the last move to the Trash, also one from before a restart. Ctrl+Z in a
        // text field stays the field's own undo.
        Action {
            objectName: "undoMoveAction"
            text: "Undo Move to Trash"
            shortcut: "Ctrl+Z"
            enabled: RavelinthViewModel.undo.canUndo && !RavelinthViewModel.undo.isUndoing
            onTriggered: {
                root.post("undoMoveToTrash")
                RavelinthViewModel.undo.undo()
            }
        }
        MenuSeparator {}
        Action {
            objectName: "cutAction"
            property string shortcutHint: "Ctrl+X"
            text: "Cut"
            enabled: editMenu.field !== null && editMenu.field.selectedText !== ""
            onTriggered: root.editField(field => field.cut())
        }
        Action {
            objectName: "copyAction"
            property string shortcutHint: "Ctrl+C"
            text: "Copy"
            enabled: editMenu.field !== null && editMenu.field.selectedText !== ""
            onTriggered: root.editField(field => field.copy())
        }
        Action {
            objectName: "pasteAction"
            property string shortcutHint: "Ctrl+V"
            text: "Paste"
            enabled: editMenu.field !== null && editMenu.field.canPaste
            onTriggered: root.editField(field => field.paste())
        }
        MenuSeparator {}
        Action {
            id: selectAllAction
            objectName: "selectAllAction"
            text: "Select All"
            shortcut: "Ctrl+A"
            onTriggered: {
                root.post("selectAllFiles")
                RavelinthViewModel.selection.selectAll()
            }
        }
    }
    Menu {
        title: "&Scan"
        delegate: CommandMenuItem {}
        Action {
            text: "Start Scan"
            shortcut: "Ctrl+Return"
            onTriggered: {
                root.post("startScan")
                root.content.selectedTab = "scanner"
                RavelinthViewModel.scan.start()
            }
        }
        Action {
            text: "Stop Scan"
            shortcut: "Ctrl+."
            onTriggered: {
                root.post("stopScan")
                if (RavelinthViewModel.scan.isScanning)
                    RavelinthViewModel.scan.stop()
            }
        }
        MenuSeparator {}
        Menu {
            title: "Quick Scan"
            delegate: CommandMenuItem {}
            Action {
                text: "Home Folder"
                onTriggered: root.quickScan("home")
            }
            Action {
                text: "Downloads"
                onTriggered: root.quickScan("downloads")
            }
            Action {
                text: "Desktop"
                onTriggered: root.quickScan("desktop")
            }
            Action {
                text: "Applications"
                onTriggered: root.quickScan("applications")
            }
        }
    }
    Menu {
        title: "&View"
        delegate: CommandMenuItem {}
        Action {
            text: "Show Dashboard"
            shortcut: "Ctrl+1"
            onTriggered: {
                root.post("showDashboard")
                root.content.selectedTab = "dashboard"
            }
        }
        Action {
            text: "Show Scanner"
            shortcut: "Ctrl+2"
            onTriggered: {
                root.post("showScanner")
                root.content.selectedTab = "scanner"
            }
        }
        Action {
            text: "Refresh Disk Info"
            shortcut: "Ctrl+R"
            onTriggered: {
                root.post("refreshDiskInfo")
                RavelinthViewModel.disk.refresh()
            }
        }
        MenuSeparator {}
        Action {
            objectName: "toggleSidebarAction"
            text: root.content.sidebarVisible ? "Hide Sidebar" : "Show Sidebar"
            shortcut: "Ctrl+Alt+S"
            onTriggered: root.content.sidebarVisible = !root.content.sidebarVisible
        }
    }
}
