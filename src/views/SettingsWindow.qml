import QtQuick
import Ravelinth
import QtQuick.Controls

// The settings window: its own top-level window around SettingsView.
ApplicationWindow {
    id: root
    title: "Settings"
    width: 450
    height: 350
    minimumWidth: 450
    minimumHeight: 350
    color: Theme.windowBackground
    SettingsView {
        anchors.fill: parent
    }
}
