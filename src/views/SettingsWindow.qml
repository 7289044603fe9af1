pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls

// The settings window: its own top-level window around SettingsView. The view is made each time
// the window opens, so it reads the stored preferences afresh.
ApplicationWindow {
    id: root
    title: "Settings"
    width: 480
    height: 430
    minimumWidth: 480
    minimumHeight: 430
    maximumWidth: 480
    maximumHeight: 430
    color: Theme.windowBackground
    // Closing the window withdraws the root's request, so the next request opens it again.
    onClosing: RavelinthViewModel.showSettings = false
    // Over the middle of the window it was opened from, each time it opens, wherever that is now.
    onVisibleChanged: {
        if (visible && transientParent) {
            x = transientParent.x + Math.round((transientParent.width - width) / 2)
            y = transientParent.y + Math.round((transientParent.height - height) / 2)
        }
    }

    // Escape closes, unless it is closing the size picker's list first.
    Shortcut {
        sequences: ["Escape", "Ctrl+W"]
        enabled: !(loader.item && loader.item.popupOpen)
        onActivated: root.close()
    }

    // Loaded from its file: the 6.4 Loader gives what it makes a context of its own, which a
    // component bound to this file refuses.
    Loader {
        id: loader
        objectName: "settingsLoader"
        anchors.fill: parent
        active: root.visible
        source: "SettingsView.qml"
        onLoaded: item.focusFirstControl()
    }
}
