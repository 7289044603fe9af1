import QtQuick
import Ravelinth
import QtQuick.Controls

// The settings window: its own top-level window around SettingsView. The view is made each time
// the window opens, so it reads the stored preferences afresh.
ApplicationWindow {
    id: root
    title: "Settings"
    width: 450
    height: 350
    minimumWidth: 450
    minimumHeight: 350
    maximumWidth: 450
    maximumHeight: 350
    color: Theme.windowBackground
    property alias view: loader.item
    // When opened for a view model's request, closing the window withdraws the request, so the
    // next request opens it again.
    property RavelinthViewModel viewModel: null

    onClosing: if (viewModel) viewModel.showSettings = false

    Loader {
        id: loader
        anchors.fill: parent
        active: root.visible
        sourceComponent: SettingsView {}
    }
}
