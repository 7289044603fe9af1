pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The main window: the menu bar, the toolbar and the content view, plus the settings window.
//
// Every menu command announces itself on the notification centre, for whatever else listens, and
// then does what its title says. The shortcuts listed in Settings live here too, so that they work
// wherever the focus is (a focused text field keeps its own editing keys).
ApplicationWindow {
    id: window
    width: 1280
    height: 840
    minimumWidth: 1200
    minimumHeight: 800
    visible: true
    title: "Ravelinth"
    color: Theme.windowBackground

    readonly property bool isScanning: RavelinthViewModel.scan.state.phase === ScanPhase.Scanning

    function post(name, object) {
        if (object === undefined)
            AppContext.notifications.post(name)
        else
            AppContext.notifications.post(name, object)
    }

    function isTextField(item) {
        return item !== null && typeof item.selectAll === "function" && typeof item.paste === "function"
    }
    // The text field the Edit menu's Cut, Copy and Paste act on: the focused one, also while the
    // open menu holds the focus itself.
    property Item editedField: null
    onActiveFocusItemChanged: {
        if (isTextField(activeFocusItem))
            editedField = activeFocusItem
        else if (activeFocusItem !== null && !menuIsOpen())
            editedField = null
    }
    function menuIsOpen() {
        for (let i = 0; i < menuBar.count; ++i) {
            if (menuBar.menuAt(i).visible)
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
        if (isScanning)
            return
        const location = AppContext.quickAccessLocations.find(l => l.name.toLowerCase() === key)
        if (!location)
            return
        RavelinthViewModel.scan.path = location.path
        RavelinthViewModel.scan.start()
        content.selectedTab = "scanner"
    }

    function openSettings() {
        if (settingsWindow.visible)
            settingsWindow.raise()
        else
            settingsWindow.show()
        settingsWindow.requestActivate()
    }

    // Ctrl+A belongs to the file list even while a text field has focus.
    SelectAllPassThrough {
        window: window
    }

    // The file list's commands, as the shortcut reference in Settings lists them.
    Shortcut {
        objectName: "searchShortcut"
        sequence: "Ctrl+F"
        onActivated: content.focusSearchField()
    }
    Shortcut {
        objectName: "deselectAllShortcut"
        sequence: "Ctrl+Shift+A"
        onActivated: RavelinthViewModel.selection.clear()
    }
    Shortcut {
        objectName: "trashShortcut"
        sequence: "Ctrl+Backspace"
        onActivated: RavelinthViewModel.operations.requestMoveSelectedToTrash()
    }
    Shortcut {
        objectName: "revealShortcut"
        sequence: "Ctrl+Shift+G"
        onActivated: RavelinthViewModel.operations.revealSelected()
    }

    // F6 and Shift+F6 go round the window's regions (toolbar, sidebar, header, content), landing
    // on each one's first control, as in other desktop programs.
    Shortcut {
        objectName: "nextRegionShortcut"
        sequence: "F6"
        onActivated: window.focusRegion(1)
    }
    Shortcut {
        objectName: "previousRegionShortcut"
        sequence: "Shift+F6"
        onActivated: window.focusRegion(-1)
    }
    function focusRegion(step) {
        const regions = [toolbar].concat(Array.from(content.regions))
        const inside = (item, region) => {
            for (let it = item; it !== null; it = it.parent) {
                if (it === region)
                    return true
            }
            return false
        }
        let current = -1
        for (let i = 0; i < regions.length; ++i) {
            if (activeFocusItem !== null && inside(activeFocusItem, regions[i]))
                current = i
        }
        for (let n = 1; n <= regions.length; ++n) {
            const region = regions[(current + step * n + regions.length * n) % regions.length]
            if (!region.visible)
                continue
            const first = region.nextItemInFocusChain(true)
            if (first !== null && inside(first, region)) {
                first.forceActiveFocus(Qt.TabFocusReason)
                return
            }
        }
    }

    // What a screen reader hears without moving: the end of a scan and, after it, each change of
    // the filtered count. Its accessible name is the message; it draws nothing.
    Item {
        id: scanStatus
        objectName: "scanStatus"
        parent: window.contentItem
        width: 1
        height: 1
        Accessible.role: Accessible.StatusBar
        Accessible.name: {
            const phase = RavelinthViewModel.scan.state.phase
            if (phase === ScanPhase.Scanning)
                return "Scanning"
            if (phase !== ScanPhase.Completed)
                return ""
            const list = RavelinthViewModel.fileList
            const size = TextFormat.byteCount(list.totalScannedSize, TextFormat.binaryUnits)
            if (list.count !== list.fileCount)
                return "Showing " + list.count + " of " + list.fileCount + " files • " + size
            return "Scan complete: " + list.count + (list.count === 1 ? " file • " : " files • ") + size
        }
    }

    menuBar: MenuBar {
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
                    window.post("startNewScan")
                    RavelinthViewModel.scan.reset()
                    content.focusPathField()
                }
            }
            Action {
                text: "Browse Folder..."
                shortcut: "Ctrl+O"
                onTriggered: {
                    window.post("browseFolder")
                    content.selectedTab = "scanner"
                    RavelinthViewModel.scan.browse()
                }
            }
            Action {
                text: "Export List..."
                enabled: RavelinthViewModel.fileList.count > 0
                onTriggered: {
                    window.post("exportList")
                    exportDialog.open()
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
            readonly property Item field: window.editedField
            // Puts back the last move to the Trash, also one from before a restart. Ctrl+Z in a
            // text field stays the field's own undo.
            Action {
                objectName: "undoMoveAction"
                text: "Undo Move to Trash"
                shortcut: "Ctrl+Z"
                enabled: RavelinthViewModel.undo.canUndo && !RavelinthViewModel.undo.isUndoing
                onTriggered: {
                    window.post("undoMoveToTrash")
                    RavelinthViewModel.undo.undo()
                }
            }
            MenuSeparator {}
            Action {
                objectName: "cutAction"
                property string shortcutHint: "Ctrl+X"
                text: "Cut"
                enabled: editMenu.field !== null && editMenu.field.selectedText !== ""
                onTriggered: window.editField(field => field.cut())
            }
            Action {
                objectName: "copyAction"
                property string shortcutHint: "Ctrl+C"
                text: "Copy"
                enabled: editMenu.field !== null && editMenu.field.selectedText !== ""
                onTriggered: window.editField(field => field.copy())
            }
            Action {
                objectName: "pasteAction"
                property string shortcutHint: "Ctrl+V"
                text: "Paste"
                enabled: editMenu.field !== null && editMenu.field.canPaste
                onTriggered: window.editField(field => field.paste())
            }
            MenuSeparator {}
            Action {
                id: selectAllAction
                objectName: "selectAllAction"
                text: "Select All"
                shortcut: "Ctrl+A"
                onTriggered: {
                    window.post("selectAllFiles")
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
                    window.post("startScan")
                    content.selectedTab = "scanner"
                    RavelinthViewModel.scan.start()
                }
            }
            Action {
                text: "Stop Scan"
                shortcut: "Ctrl+."
                onTriggered: {
                    window.post("stopScan")
                    if (window.isScanning)
                        RavelinthViewModel.scan.stop()
                }
            }
            MenuSeparator {}
            Menu {
                title: "Quick Scan"
                delegate: CommandMenuItem {}
                Action {
                    text: "Home Folder"
                    onTriggered: window.quickScan("home")
                }
                Action {
                    text: "Downloads"
                    onTriggered: window.quickScan("downloads")
                }
                Action {
                    text: "Desktop"
                    onTriggered: window.quickScan("desktop")
                }
                Action {
                    text: "Applications"
                    onTriggered: window.quickScan("applications")
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
                    window.post("showDashboard")
                    content.selectedTab = "dashboard"
                }
            }
            Action {
                text: "Show Scanner"
                shortcut: "Ctrl+2"
                onTriggered: {
                    window.post("showScanner")
                    content.selectedTab = "scanner"
                }
            }
            Action {
                text: "Refresh Disk Info"
                shortcut: "Ctrl+R"
                onTriggered: {
                    window.post("refreshDiskInfo")
                    RavelinthViewModel.disk.refresh()
                }
            }
            MenuSeparator {}
            Action {
                objectName: "toggleSidebarAction"
                text: content.sidebarVisible ? "Hide Sidebar" : "Show Sidebar"
                shortcut: "Ctrl+Alt+S"
                onTriggered: content.sidebarVisible = !content.sidebarVisible
            }
        }
    }

    header: ToolBar {
        id: toolbar
        objectName: "toolbar"
        padding: 0
        implicitHeight: 48
        background: Rectangle {
            color: Theme.material
            Rectangle {
                anchors.bottom: parent.bottom
                width: parent.width
                height: 1
                color: Theme.divider
            }
        }
        RowLayout {
            id: toolbarRow
            x: 8
            anchors.verticalCenter: parent.verticalCenter
            spacing: 4
            ToolbarButton {
                id: scanToolButton
                objectName: "toolbarScanButton"
                text: window.isScanning ? "Stop" : "Scan"
                symbol: window.isScanning ? "stop.fill" : "play.fill"
                tint: window.isScanning ? Theme.red : Theme.accent
                onClicked: window.isScanning ? RavelinthViewModel.scan.stop()
                                             : RavelinthViewModel.scan.start()
            }
            Rectangle {
                Layout.leftMargin: 6
                Layout.rightMargin: 6
                implicitWidth: 1
                implicitHeight: 22
                color: Theme.divider
            }
            ToolbarButton {
                objectName: "toolbarRevealButton"
                enabled: RavelinthViewModel.selection.count > 0
                text: "Reveal"
                symbol: "folder"
                onClicked: RavelinthViewModel.operations.revealSelected()
            }
            ToolbarButton {
                objectName: "toolbarTrashButton"
                enabled: RavelinthViewModel.selection.count > 0
                text: "Trash"
                symbol: "trash"
                onClicked: RavelinthViewModel.operations.requestMoveSelectedToTrash()
            }
            ToolbarButton {
                objectName: "toolbarRefreshButton"
                text: "Refresh"
                symbol: "arrow.clockwise"
                onClicked: RavelinthViewModel.disk.refresh()
            }
        }
        ToolbarButton {
            objectName: "toolbarSidebarButton"
            anchors.right: parent.right
            anchors.rightMargin: 8
            anchors.verticalCenter: parent.verticalCenter
            text: "Sidebar"
            symbol: "sidebar.left"
            Accessible.checkable: true
            Accessible.checked: content.sidebarVisible
            tint: content.sidebarVisible ? Theme.accent : Theme.primaryText
            ToolTip.visible: hovered
            ToolTip.delay: 600
            ToolTip.text: content.sidebarVisible ? "Hide Sidebar" : "Show Sidebar"
            onClicked: content.sidebarVisible = !content.sidebarVisible
        }
    }

    ContentView {
        id: content
        objectName: "content"
        anchors.fill: parent
    }

    ListExportDialog {
        id: exportDialog
        objectName: "exportDialog"
    }

    // The settings live in their own window; the root's showSettings asks for it, and closing
    // the window answers by setting it back.
    SettingsWindow {
        id: settingsWindow
        objectName: "settingsWindow"
        transientParent: window
        visible: false
        onVisibleChanged: if (!visible) RavelinthViewModel.showSettings = false
    }
    Connections {
        target: RavelinthViewModel
        function onShowSettingsChanged() {
            if (RavelinthViewModel.showSettings)
                window.openSettings()
            else
                settingsWindow.close()
        }
    }
}
