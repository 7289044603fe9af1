pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The main window: the menu bar, the toolbar and the content view, plus the settings window.
//
// Menu commands announce themselves on the notification centre and do nothing more; a later
// handler binds to those names. The exceptions are the ones a desktop user expects to act:
// Select All (the listed files), Settings... and Quit.
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

    // The focused text field, for the standard pasteboard entries of the Edit menu.
    function focusedField() {
        const item = window.activeFocusItem
        return item && typeof item.selectAll === "function" && typeof item.paste === "function"
               ? item : null
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

    menuBar: MenuBar {
        Menu {
            title: "&File"
            delegate: CommandMenuItem {}
            Action {
                text: "New Scan"
                shortcut: "Ctrl+N"
                onTriggered: window.post("startNewScan")
            }
            Action {
                text: "Browse Folder..."
                shortcut: "Ctrl+O"
                onTriggered: window.post("browseFolder")
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
            title: "&Edit"
            delegate: CommandMenuItem {}
            Action {
                property string shortcutHint: "Ctrl+X"
                text: "Cut"
                enabled: window.focusedField() !== null
                onTriggered: window.focusedField().cut()
            }
            Action {
                property string shortcutHint: "Ctrl+C"
                text: "Copy"
                enabled: window.focusedField() !== null
                onTriggered: window.focusedField().copy()
            }
            Action {
                property string shortcutHint: "Ctrl+V"
                text: "Paste"
                enabled: window.focusedField() !== null
                onTriggered: window.focusedField().paste()
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
                onTriggered: window.post("startScan")
            }
            Action {
                text: "Stop Scan"
                shortcut: "Ctrl+."
                onTriggered: window.post("stopScan")
            }
            MenuSeparator {}
            Menu {
                title: "Quick Scan"
                delegate: CommandMenuItem {}
                Action {
                    text: "Home Folder"
                    onTriggered: window.post("quickScan", "home")
                }
                Action {
                    text: "Downloads"
                    onTriggered: window.post("quickScan", "downloads")
                }
                Action {
                    text: "Desktop"
                    onTriggered: window.post("quickScan", "desktop")
                }
                Action {
                    text: "Applications"
                    onTriggered: window.post("quickScan", "applications")
                }
            }
        }
        Menu {
            title: "&View"
            delegate: CommandMenuItem {}
            Action {
                text: "Show Dashboard"
                shortcut: "Ctrl+1"
                onTriggered: window.post("showDashboard")
            }
            Action {
                text: "Show Scanner"
                shortcut: "Ctrl+2"
                onTriggered: window.post("showScanner")
            }
            Action {
                text: "Refresh Disk Info"
                shortcut: "Ctrl+R"
                onTriggered: window.post("refreshDiskInfo")
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
                onClicked: RavelinthViewModel.operations.moveSelectedToTrash()
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
