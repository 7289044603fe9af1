pragma ComponentBehavior: Bound
import QtQuick
import Ravelinth
import QtQuick.Controls
import QtQuick.Layouts

// The window's content: the sidebar beside the detail column (header bar with the tabs, then the
// dashboard or the scanner tab), the first-run sheet, the question before a move to the Trash,
// the notice of files a move left behind and the error alert.
Item {
    id: root
    property string selectedTab: "scanner" // "dashboard" or "scanner"
    property bool sidebarVisible: true
    property bool showOnboarding: false
    readonly property var tabs: [
        { tab: "dashboard", title: "Dashboard", icon: "gauge.with.dots.needle.bottom.50percent" },
        { tab: "scanner", title: "Scanner", icon: "doc.text.magnifyingglass" }
    ]

    // For the menu commands: each shows the scanner tab first.
    // The regions F6 goes round, in the order they read: sidebar, header, content.
    readonly property list<Item> regions: [sidebar, headerBar, pages]

    function focusPathField() {
        selectedTab = "scanner"
        scannerView.focusPathField()
    }
    function focusSearchField() {
        selectedTab = "scanner"
        fileList.focusSearchField()
    }

    Component.onCompleted: {
        showOnboarding = !RavelinthViewModel.preferences.hasSeenOnboarding
        errorAlert.follow()
    }
    onShowOnboardingChanged: showOnboarding ? onboardingSheet.open() : onboardingSheet.close()

    SplitView {
        anchors.fill: parent
        orientation: Qt.Horizontal
        handle: Rectangle {
            implicitWidth: 1
            color: Theme.divider
        }

        SidebarView {
            id: sidebar
            objectName: "sidebar"
            visible: root.sidebarVisible
            SplitView.preferredWidth: 240
            SplitView.minimumWidth: 200
            SplitView.maximumWidth: 360
        }

        ColumnLayout {
            id: detailColumn
            SplitView.fillWidth: true
            spacing: 0

            Rectangle {
                id: headerBar
                Layout.fillWidth: true
                implicitHeight: headerRow.implicitHeight + 20
                color: Theme.material

                RowLayout {
                    id: headerRow
                    anchors.fill: parent
                    anchors.leftMargin: 16
                    anchors.rightMargin: 16
                    anchors.topMargin: 10
                    anchors.bottomMargin: 10
                    spacing: 12

                    DiagonalGradientRectangle {
                        implicitWidth: 32
                        implicitHeight: 32
                        radius: 8
                        SymbolIcon {
                            anchors.centerIn: parent
                            symbol: "internaldrive"
                            size: 16
                            color: "white"
                            font.weight: Font.DemiBold
                        }
                    }
                    Column {
                        spacing: 2
                        Text {
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                            text: "Ravelinth"
                            font.pixelSize: 18
                            font.bold: true
                            color: Theme.primaryText
                        }
                        Text {
                            Accessible.role: Accessible.StaticText
                            Accessible.name: text
                            text: "v" + AppContext.version
                            font.pixelSize: 11
                            font.weight: Font.Medium
                            color: Theme.secondaryText
                        }
                    }
                    Row {
                        Layout.leftMargin: 12
                        spacing: 4
                        Repeater {
                            model: root.tabs
                            TabButton {
                                id: tabButton
                                required property var modelData
                                objectName: "tab_" + modelData.tab
                                title: modelData.title
                                icon: modelData.icon
                                isSelected: root.selectedTab === modelData.tab
                                action: function () { root.selectedTab = tabButton.modelData.tab }
                            }
                        }
                    }
                    Item {
                        Layout.fillWidth: true
                    }
                    CompactDiskUsage {
                        visible: RavelinthViewModel.disk.available
                        diskInfo: RavelinthViewModel.disk.info
                    }
                    AbstractButton {
                        id: helpButton
                        // A screen reader's Press is the click; a bare button does not answer it.
                        Accessible.onPressAction: helpButton.clicked()
                        objectName: "helpButton"
                        implicitWidth: 28
                        implicitHeight: 28
                        hoverEnabled: true
                        focusPolicy: Qt.TabFocus
                        onClicked: root.showOnboarding = true
                        ToolTip.visible: hovered
                        ToolTip.delay: 600
                        ToolTip.text: "Show Tutorial"
                        Accessible.name: "Show Tutorial"
                        contentItem: SymbolIcon {
                            symbol: "questionmark.circle"
                            size: 16
                            color: Theme.secondaryText
                        }
                        background: Rectangle {
                            radius: 14
                            color: helpButton.hovered ? Theme.withOpacity(Theme.gray, 0.12)
                                                      : "transparent"
                            border.width: helpButton.visualFocus ? 2 : 0
                            border.color: Theme.withOpacity(Theme.accent, 0.5)
                        }
                    }
                }
            }
            Rectangle {
                Layout.fillWidth: true
                Layout.preferredHeight: 1
                color: Theme.divider
            }
            StackLayout {
                id: pages
                Layout.fillWidth: true
                Layout.fillHeight: true
                currentIndex: root.selectedTab === "dashboard" ? 0 : 1
                DashboardView {
                    objectName: "dashboard"
                }
                ColumnLayout {
                    spacing: 0
                    ScannerView {
                        id: scannerView
                        objectName: "scannerView"
                        Layout.fillWidth: true
                        Layout.margins: 16
                    }
                    Rectangle {
                        Layout.fillWidth: true
                        Layout.preferredHeight: 1
                        color: Theme.divider
                    }
                    FileListView {
                        id: fileList
                        objectName: "fileList"
                        Layout.fillWidth: true
                        Layout.fillHeight: true
                    }
                }
            }
        }
    }

    FolderChooser {
        id: folderChooser
        objectName: "folderChooser"
    }

    // Over the bottom of the list it speaks about, where it covers the least; it never blocks
    // the window.
    TrashResultNotice {
        id: trashResultNotice
        objectName: "trashResultNotice"
        width: Math.min(560, detailColumn.width - 32)
        x: detailColumn.x + Math.round((detailColumn.width - width) / 2)
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 16
    }
    UndoNotice {
        objectName: "undoNotice"
        width: Math.min(560, detailColumn.width - 32)
        x: detailColumn.x + Math.round((detailColumn.width - width) / 2)
        anchors.bottom: trashResultNotice.visible ? trashResultNotice.top : parent.bottom
        anchors.bottomMargin: trashResultNotice.visible ? 8 : 16
    }

    TrashConfirmationSheet {
        objectName: "trashConfirmationSheet"
    }

    // The first-run tour, over the whole window.
    Popup {
        id: onboardingSheet
        objectName: "onboardingSheet"
        x: Math.round((root.width - width) / 2)
        y: Math.round((root.height - height) / 2)
        modal: true
        dim: true
        focus: true
        closePolicy: Popup.CloseOnEscape
        onAboutToShow: onboardingContent.isPresented = true
        // The keyboard starts on the tour's own button, not behind the dim.
        onOpened: onboardingContent.focusFirstButton()
        onClosed: root.showOnboarding = false
        padding: 0
        Overlay.modal: Rectangle {
            color: "#66000000"
        }
        background: Rectangle {
            radius: 12
            color: Theme.windowBackground
            border.width: 1
            border.color: Theme.divider
        }
        contentItem: OnboardingView {
            id: onboardingContent
            onIsPresentedChanged: if (!isPresented) root.showOnboarding = false
        }
    }

    // Every failure the view model reports. A new message while the alert is up replaces its
    // text; closing the alert in any way clears the message.
    Dialog {
        id: errorAlert
        objectName: "errorAlert"
        title: "Error"
        modal: true
        focus: true
        closePolicy: Popup.CloseOnEscape
        x: Math.round((root.width - width) / 2)
        y: Math.round((root.height - height) / 2)
        width: Math.min(420, root.width - 80)
        Overlay.modal: Rectangle {
            color: "#40000000"
        }

        function follow() {
            if (RavelinthViewModel.errorMessage !== "")
                open()
            else
                close()
        }
        onClosed: RavelinthViewModel.errorMessage = ""

        padding: 20
        topPadding: 12
        background: Rectangle {
            radius: 10
            color: Theme.windowBackground
            border.width: 1
            border.color: Theme.withOpacity(Theme.gray, 0.35)
        }
        header: Text {
            text: errorAlert.title
            font.pixelSize: 15
            font.bold: true
            color: Theme.primaryText
            leftPadding: 20
            rightPadding: 20
            topPadding: 18
        }
        // The alert takes the keyboard on its only button, so the reader names it at once.
        onOpened: errorButtons.standardButton(Dialog.Ok).forceActiveFocus(Qt.PopupFocusReason)
        footer: DialogButtonBox {
            id: errorButtons
            objectName: "errorButtons"
            standardButtons: Dialog.Ok
            alignment: Qt.AlignRight
            padding: 12
            topPadding: 0
            background: null
        }

        // Return presses the only button, as in any desktop alert.
        Shortcut {
            sequences: ["Return", "Enter"]
            enabled: errorAlert.opened
            onActivated: errorAlert.accept()
        }

        RowLayout {
            width: parent.width
            spacing: 12
            SymbolIcon {
                symbol: "exclamationmark.triangle.fill"
                size: 28
                color: Theme.orange
                Layout.alignment: Qt.AlignTop
            }
            Label {
                objectName: "errorText"
                Layout.fillWidth: true
                text: RavelinthViewModel.errorMessage
                wrapMode: Text.Wrap
                font.pixelSize: 13
                color: Theme.primaryText
            }
        }
        Connections {
            target: RavelinthViewModel
            function onErrorMessageChanged() { errorAlert.follow() }
        }
    }
}
