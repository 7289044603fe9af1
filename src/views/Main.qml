import QtQuick
import Ravelinth
import QtQuick.Controls

// The main window: menus and the content view.
ApplicationWindow {
    id: window
    width: 1280
    height: 840
    minimumWidth: 1200
    minimumHeight: 800
    visible: true
    title: "Ravelinth"
    color: Theme.windowBackground

    ContentView {
        id: content
        anchors.fill: parent
    }
}
