pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The main window: the menu bar, the toolbar and the content view, plus the settings window. The
// shortcuts listed in Settings live here, so that they work wherever the focus is (a focused text
// field keeps its own editing keys).
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

    function isTextField(item) {
        return item !== null && typeof item.selectAll === "function" && typeof item.paste === "function"
    }
    // The text field the Edit menu's Cut, Copy and Paste act on: the focused one, also while the
    // open menu holds the focus itself.
    property Item editedField: null
    onActiveFocusItemChanged: {
        if (isTextField(activeFocusItem))
            editedField = activeFocusItem
        else if (activeFocusItem !== null && !menuBar.isOpen())
            editedField = null
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

    menuBar: MainMenuBar {
        content: content
        editedField: window.editedField
        onExportRequested: exportDialog.open()
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
