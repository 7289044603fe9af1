import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The window's content: the sidebar beside the detail column (header bar with the tabs, then the
// dashboard or the scanner tab). Owns the one view model of the process.
Item {
    id: root
    property RavelinthViewModel viewModel: RavelinthViewModel {}
    property string selectedTab: "scanner" // "dashboard" or "scanner"
    property bool showOnboarding: false

    Preferences {
        id: preferences
    }
    Component.onCompleted: showOnboarding = !preferences.hasSeenOnboarding

    RowLayout {
        anchors.fill: parent
        spacing: 0

        SidebarView {
            viewModel: root.viewModel
            Layout.fillHeight: true
            Layout.preferredWidth: 240
        }
        Rectangle {
            Layout.fillHeight: true
            Layout.preferredWidth: 1
            color: Theme.divider
        }
        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0

            RowLayout {
                id: headerBar
                Layout.fillWidth: true
                Layout.margins: 10
                Label {
                    text: "Ravelinth"
                    font.pixelSize: 18
                    font.bold: true
                }
                Button {
                    text: "Dashboard"
                    onClicked: root.selectedTab = "dashboard"
                }
                Button {
                    text: "Scanner"
                    onClicked: root.selectedTab = "scanner"
                }
                Item {
                    Layout.fillWidth: true
                }
                CompactDiskUsage {
                    visible: root.viewModel.diskInfo !== null
                    diskInfo: root.viewModel.diskInfo
                }
            }
            Rectangle {
                Layout.fillWidth: true
                Layout.preferredHeight: 1
                color: Theme.divider
            }
            StackLayout {
                Layout.fillWidth: true
                Layout.fillHeight: true
                currentIndex: root.selectedTab === "dashboard" ? 0 : 1
                DashboardView {
                    viewModel: root.viewModel
                }
                ColumnLayout {
                    spacing: 0
                    ScannerView {
                        viewModel: root.viewModel
                        Layout.fillWidth: true
                        Layout.margins: 16
                    }
                    Rectangle {
                        Layout.fillWidth: true
                        Layout.preferredHeight: 1
                        color: Theme.divider
                    }
                    FileListView {
                        viewModel: root.viewModel
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                    }
                }
            }
        }
    }

    Popup {
        id: onboardingSheet
        x: (root.width - width) / 2
        y: (root.height - height) / 2
        modal: true
        dim: true
        closePolicy: Popup.CloseOnEscape
        visible: root.showOnboarding
        onClosed: root.showOnboarding = false
        padding: 0
        contentItem: OnboardingView {
            isPresented: root.showOnboarding
            onIsPresentedChanged: if (!isPresented) root.showOnboarding = false
        }
    }
}
